// Numbers in upper-case hexadecimal digits, as frames, dumps and messages write them.
#pragma once

#include <cstdint>
#include <string>

namespace kelvora {

/// The number's last `digits` (1 to 16) hexadecimal digits, led by zeros.
std::string HexText(std::uint64_t value, int digits);

}  // namespace kelvora
