#include "platform/HexText.h"

namespace kelvora {

std::string HexText(std::uint64_t value, int digits)
{
    std::string text;
    for (int place = digits - 1; place >= 0; --place)
        text += "0123456789ABCDEF"[value >> (4 * place) & 0xFU];
    return text;
}

}  // namespace kelvora
