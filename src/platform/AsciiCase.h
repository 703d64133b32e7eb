// Upper- and lower-casing of ASCII letters. Texts are bytes: every other code stays, whatever the locale.
#pragma once

namespace kelvora {

constexpr char AsciiUpper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr char AsciiLower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace kelvora
