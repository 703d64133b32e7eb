// What ends the lines of texts that are shown, of files and of the line's own text.
#pragma once

#include <string_view>

namespace kelvora {

inline constexpr std::string_view LineEnd = "\r\n";

/// Between two parts of a text: an empty line.
inline constexpr std::string_view Paragraph = "\r\n\r\n";

}  // namespace kelvora
