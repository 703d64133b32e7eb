// The usual notation for the settings of a serial line: "<baud>,<parity>,<data bits>,<stop bits>", as in
// "9600,n,8,1".
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string_view>

namespace kelvora {

struct SerialSettings {
    int baud = 9600;    ///< 150 to 115200
    char parity = 'n';  ///< 'n' none, 'o' odd, 'e' even
    int dataBits = 8;   ///< 7 or 8
    int stopBits = 1;   ///< 1 or 2

    friend bool operator==(const SerialSettings&, const SerialSettings&) = default;

    /// How long that many bytes take on the line, start, parity and stop bits included; rounded up.
    std::chrono::microseconds TimeOf(std::size_t bytes) const;
};

/// The settings that a text describes; the parity letter may be a capital. Nothing for any other text.
std::optional<SerialSettings> ParseSerialSettings(std::string_view text);

}  // namespace kelvora
