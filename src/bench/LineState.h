// What the devices of a simulated line remember without power: the keyboard's flash, the identity block in
// each module's EEPROM, and the terminal's connection mode.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kelvora::bench {

/// Bytes of the keyboard's flash.
inline constexpr std::size_t FlashSize = 8192;

/// Positions on a line, and so the addresses of modules: 0 to 6.
inline constexpr std::size_t MostModules = 7;

/// The eight bytes of a module's EEPROM from 0x00AA on.
using IdentityBytes = std::array<std::uint8_t, 8>;

using FlashBytes = std::array<std::uint8_t, FlashSize>;

struct LineState {
    FlashBytes flash{};
    std::vector<IdentityBytes> modules;  ///< by address, in line order; at most MostModules
    char mode = '0';                     ///< connection mode, '0' to '3'

    friend bool operator==(const LineState&, const LineState&) = default;
};

}  // namespace kelvora::bench
