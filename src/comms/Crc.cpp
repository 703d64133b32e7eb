#include "comms/Crc.h"

#include <array>

namespace kelvora {

namespace {

constexpr std::uint16_t Polynomial16 = 0x1021;
constexpr std::uint32_t ReflectedPolynomial32 = 0xEDB88320;

constexpr std::array<std::uint16_t, 256> Table16 = [] {
    std::array<std::uint16_t, 256> table{};
    for (unsigned value = 0; value < table.size(); ++value) {
        unsigned crc = value << 8;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 0x8000U) != 0 ? (crc << 1) ^ Polynomial16 : crc << 1;
        table[value] = static_cast<std::uint16_t>(crc);
    }
    return table;
}();

constexpr std::array<std::uint32_t, 256> Table32 = [] {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t value = 0; value < table.size(); ++value) {
        std::uint32_t crc = value;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1U) != 0 ? (crc >> 1) ^ ReflectedPolynomial32 : crc >> 1;
        table[value] = crc;
    }
    return table;
}();

}  // namespace

std::uint16_t Crc16(std::string_view bytes)
{
    std::uint16_t crc = 0xFFFF;
    for (const char byte : bytes)
        crc = static_cast<std::uint16_t>((crc << 8) ^ Table16[(crc >> 8) ^ static_cast<unsigned char>(byte)]);
    return crc;
}

std::uint32_t Crc32(std::string_view bytes)
{
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char byte : bytes)
        crc = (crc >> 8) ^ Table32[(crc ^ static_cast<unsigned char>(byte)) & 0xFFU];
    return ~crc;
}

}  // namespace kelvora
