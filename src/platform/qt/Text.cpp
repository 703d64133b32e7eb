#include "platform/qt/Text.h"

#include <QFile>

#include "platform/Encoding.h"

namespace kelvora {

QString ToQString(std::string_view text)
{
    return QString::fromUtf8(Utf8FromText(text));
}

std::string FromQString(const QString& text)
{
    std::string result;
    result.reserve(static_cast<std::size_t>(text.size()));
    for (const QChar character : text)
        result += CodeOf(character.unicode()).value_or('?');
    return result;
}

QString PathToQString(std::string_view path)
{
    return QFile::decodeName(QByteArray(path.data(), static_cast<qsizetype>(path.size())));
}

std::string PathFromQString(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

}  // namespace kelvora
