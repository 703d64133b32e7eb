#include "platform/qt/Text.h"

#include <QFile>
#include <algorithm>
#include <array>

namespace kelvora {

namespace {

// Codes 0x80 to 0x9F of Windows-1252. The five that it leaves open stand for themselves, so that every code
// comes back.
constexpr std::array<char16_t, 32> UpperControls{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

}  // namespace

QString ToQString(std::string_view text)
{
    QString result(static_cast<qsizetype>(text.size()), Qt::Uninitialized);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto code = static_cast<unsigned char>(text[i]);
        const bool upperControl = code >= 0x80 && code < 0xA0;
        result[static_cast<qsizetype>(i)] = QChar(upperControl ? UpperControls.at(code - 0x80U) : code);
    }
    return result;
}

std::string FromQString(const QString& text)
{
    std::string result;
    result.reserve(static_cast<std::size_t>(text.size()));
    for (const QChar character : text) {
        const char16_t code = character.unicode();
        if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) {
            result += static_cast<char>(code);
            continue;
        }
        const auto* const found = std::find(UpperControls.begin(), UpperControls.end(), code);
        result +=
            found == UpperControls.end() ? '?' : static_cast<char>(0x80 + (found - UpperControls.begin()));
    }
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
