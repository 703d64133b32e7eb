// The two language files, cut into lines like a setup file:
//   selection file   [CHOOSE]        EXT = the language's three-letter code
//   settings file    [PORT SETTING]  PORT = COM1..COM4   BAUD = 9600|4800|2400|1200
//                                    PARITY = 0 none|1 odd|2 even   SIZE = 7|8   STOP = 1|2
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kelvora {

/// The default port and its settings string ("9600,n,8,1").
struct PortDefaults {
    std::int16_t port = 1;
    std::string settings;

    friend bool operator==(const PortDefaults&, const PortDefaults&) = default;
};

/// The language that a selection file chooses, "ENG" where it does not say. Throws SetupError for a line that
/// is not valid and for a code that is not three letters.
std::string ReadLanguageSelection(std::string_view text);

/// What a settings file makes of the present defaults; a key that it lacks keeps its value, a value that is
/// not in the list above gives port 1, 9600, N, data bits 1 and stop bits 1. Throws SetupError.
PortDefaults ReadLanguageSettings(std::string_view text, PortDefaults present);

}  // namespace kelvora
