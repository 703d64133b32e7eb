// Upper- and lower-casing of ASCII letters. Texts are bytes: every other code stays, whatever the locale.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace kelvora {

constexpr char AsciiUpper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr char AsciiLower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Whether the two are the same, letters of either case being alike.
inline bool IsSameButCase(std::string_view left, std::string_view right)
{
    return std::ranges::equal(left, right, {}, AsciiLower, AsciiLower);
}

inline std::string LowerCase(std::string_view text)
{
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), AsciiLower);
    return lower;
}

}  // namespace kelvora
