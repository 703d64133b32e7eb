// The one-byte identities that modules report on the line. A device map text holds one character of such a
// code per position on the line, first to last.
#pragma once

#include <cstdint>

namespace kelvora::DeviceCode {

inline constexpr std::uint8_t NotInUse = 0;  ///< a record that holds no module
inline constexpr std::uint8_t MCR12 = 1;     ///< badge reader, tracks 1 and 2
inline constexpr std::uint8_t MCR23 = 2;     ///< badge reader, tracks 2 and 3
inline constexpr std::uint8_t MCR123 = 3;    ///< badge reader, tracks 1, 2 and 3
inline constexpr std::uint8_t Code4 = 4;     ///< the main keyboard's further part
inline constexpr std::uint8_t ICCR = 8;      ///< chip card unit with keypad
inline constexpr std::uint8_t BacklightOn = 23;
inline constexpr std::uint8_t BacklightOff = 31;
inline constexpr std::uint8_t KM064 = 191;    ///< extension keyboard
inline constexpr std::uint8_t KM096 = 214;    ///< main keyboard
inline constexpr std::uint8_t Unknown = 255;  ///< a module whose identity is not known

}  // namespace kelvora::DeviceCode
