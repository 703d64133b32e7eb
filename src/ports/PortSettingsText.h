// A port's settings text ("9600,n,8,1") as the settings dialog reads and writes it: by place, counted from
// the first comma p, whatever else the text holds.
//   before p  speed      p + 1  parity letter      p + 3  data bits      p + 5  stop bits
// Whether a port can be set so is for platform/SerialSettings to say.
#pragma once

#include <string>
#include <string_view>

namespace kelvora {

/// The option that each group of the dialog shows; the numbers are those of its option buttons.
struct PortChoices {
    int baud = 1;      ///< index into the baud table, see PosCfg::BaudRate
    int parity = 3;    ///< 1 odd, 2 even, 3 none
    int dataBits = 8;  ///< 7 or 8
    int stopBits = 1;  ///< 1 or 2

    friend bool operator==(const PortChoices&, const PortChoices&) = default;
};

/// What a settings text shows; a place that is missing or holds something else shows its default. Only the
/// capital letters "O" and "E" show as odd and even.
PortChoices ReadPortChoices(std::string_view settings);

/// The settings text with one choice written into it; the letter of the parity is a small one. The places
/// that the text lacks, its comma among them, are filled in from ",n,8,1" first.
std::string WithBaud(std::string_view settings, int option);
std::string WithParity(std::string_view settings, int option);
std::string WithDataBits(std::string_view settings, int option);
std::string WithStopBits(std::string_view settings, int option);

}  // namespace kelvora
