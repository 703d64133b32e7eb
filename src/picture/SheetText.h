// How much text fits on a sheet. The core measures no fonts: a letter is taken as wide as a wide sans-serif
// font's middle one, so that no common font sticks out. All texts are UTF-8.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kelvora {

/// About how wide the text is in letters of that size, in the unit of `size`.
int TextWidth(std::string_view text, int size);

/// The text as it is where it fits, else with "…" in place of its middle: a path's file name stays.
std::string Shortened(std::string_view text, int size, int width);

/// The parts joined by ", " to as few lines as have room for them, in their order. A part that is wider than
/// a line is shortened.
std::vector<std::string> WrappedParts(const std::vector<std::string>& parts, int size, int width);

}  // namespace kelvora
