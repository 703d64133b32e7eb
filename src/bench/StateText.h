// The memory of a line as the text of a state file:
//
//   'Mode: 0
//   'Module 0: AA 55 D6 17 FF FF 04 00        one such line an address, from 0 on
//   0000:00 01 02 ... 0F ................     the flash, 16 bytes a line: address / 256, address mod 256,
//                                             the bytes, and the same as characters ("." for 0..31, 127..255)
//
// Lines end with CR LF; without the CR they are read as well. Those of the flash are a dump text, so that
// such a file can also be taken as the dump of a device.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "bench/LineState.h"

namespace kelvora::bench {

/// A state file that is not one. `what()` names the line and says what was expected there.
class StateError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

std::string FormatState(const LineState& state);

/// The memory that the text describes. Throws StateError for any text that FormatState would not have made.
LineState ReadState(std::string_view text);

}  // namespace kelvora::bench
