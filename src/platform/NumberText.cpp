#include "platform/NumberText.h"

#include <algorithm>

namespace kelvora {

std::string HexText(std::uint64_t value, int digits)
{
    std::string text;
    for (int place = digits - 1; place >= 0; --place)
        text += "0123456789ABCDEF"[value >> (4 * place) & 0xFU];
    return text;
}

std::string HexBytes(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size() * 3);
    for (const char byte : bytes)
        text.append(text.empty() ? "" : " ").append(HexText(static_cast<unsigned char>(byte), 2));
    return text;
}

std::string PaddedNumber(int number, std::size_t digits)
{
    const std::string text = std::to_string(number);
    return std::string(digits - std::min(digits, text.size()), '0') + text;
}

}  // namespace kelvora
