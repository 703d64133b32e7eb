// A text of the windows, made for message boxes, where one line of UTF-8 is wanted.
#pragma once

#include <string>
#include <string_view>

namespace kelvora {

/// A text of the windows as one line of UTF-8. Where a line ended without a mark "; " parts it from the next.
std::string OneLineText(std::string_view text);

/// A line for a terminal, which does what control characters say: `instead` stands for each.
std::string WithoutControls(std::string line, char instead = ' ');

}  // namespace kelvora
