// Texts of setup files and names of files as UTF-8, for results that other programs read.
#pragma once

#include <string>
#include <string_view>

namespace kelvora {

/// A Windows-1252 text as UTF-8. The five codes that Windows-1252 leaves open become the control characters
/// of the same number, so that every code has a character of its own.
std::string Utf8FromText(std::string_view text);

/// Whether the bytes are well-formed UTF-8: no overlong forms, no surrogates, nothing past U+10FFFF.
bool IsUtf8(std::string_view bytes);

/// A path as UTF-8: as it is where it is UTF-8, else read as Windows-1252.
std::string Utf8FromPath(std::string_view path);

}  // namespace kelvora
