// The blanks that files of the program may have around a word: spaces and tabs.
#pragma once

#include <string_view>

namespace kelvora {

constexpr bool IsBlank(char c)
{
    return c == ' ' || c == '\t';
}

/// The text without the blanks around it.
constexpr std::string_view Trim(std::string_view text)
{
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

}  // namespace kelvora
