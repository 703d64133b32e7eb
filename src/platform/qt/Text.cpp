#include "platform/qt/Text.h"

#include <QFile>

#include "platform/Encoding.h"

namespace kelvora {

QString ToQString(std::string_view text)
{
    QString result(static_cast<qsizetype>(text.size()), Qt::Uninitialized);
    for (std::size_t i = 0; i < text.size(); ++i)
        result[static_cast<qsizetype>(i)] = QChar(CharacterOf(static_cast<unsigned char>(text[i])));
    return result;
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
