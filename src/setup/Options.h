// The fixed layout of a record's option text, by kind:
//   KM096      "YES" or "NO "            fiscal keyboard
//   Backlight  "YES" or "NO "            agrees with the device code (23, 31)
//   MCR        ttttt123aaa               t: tracks read, padded to 5 ("1,2  ", "2,3  ", "1,2,3")
//                                        1 2 3: character sent after that track, "^" for none
//                                        a: auto-read, "ON " or "OFF"
//   others     empty
#pragma once

#include <cstddef>
#include <string_view>

#include "platform/AsciiCase.h"

namespace kelvora::Options {

inline constexpr std::string_view Yes = "YES";
inline constexpr std::string_view No = "NO ";
inline constexpr std::string_view On = "ON ";
inline constexpr std::string_view Off = "OFF";
inline constexpr char NoSeparator = '^';

inline constexpr std::size_t TracksLength = 5;
inline constexpr std::size_t SeparatorAt = 5;  ///< where track 1's separator stands; 2 and 3 follow
inline constexpr std::size_t AutoreadAt = 8;
inline constexpr std::size_t McrLength = 11;

/// The tracks that a badge reader's options name, without the padding: "1,2".
constexpr std::string_view Tracks(std::string_view options)
{
    const std::string_view padded = options.substr(0, TracksLength);
    return padded.substr(0, padded.find_last_not_of(' ') + 1);
}

/// Whether a setup file can carry that separator: one visible character, neither "_" (which would continue
/// the line) nor a small letter (which the reader would make a capital).
constexpr bool IsSeparatorCarried(char separator)
{
    const auto code = static_cast<unsigned char>(separator);
    return code > 0x20 && code != 0x7F && separator != '_' && separator == AsciiUpper(separator);
}

}  // namespace kelvora::Options
