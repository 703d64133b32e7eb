// The two checksums of the terminal link.
#pragma once

#include <cstdint>
#include <string_view>

namespace kelvora {

/// CRC-16/CCITT-FALSE: polynomial 1021, start FFFF; it closes every frame.
std::uint16_t Crc16(std::string_view bytes);

/// The usual CRC-32 (polynomial 04C11DB7 reflected, start and end inverted); it names a flash image's
/// content.
std::uint32_t Crc32(std::string_view bytes);

}  // namespace kelvora
