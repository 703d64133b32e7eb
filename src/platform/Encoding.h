// Texts are Windows-1252 bytes, names of files are bytes that are mostly UTF-8: the ways between the two, for
// results that other programs read and for messages that name a file.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kelvora {

/// The Windows-1252 code of a character; nothing where it has none. The five codes that it leaves open stand
/// for themselves.
std::optional<char> CodeOf(char32_t character);

/// A Windows-1252 text as UTF-8. The five codes that Windows-1252 leaves open become the control characters
/// of the same number, so that every code has a character of its own.
std::string Utf8FromText(std::string_view text);

/// UTF-8 as a Windows-1252 text, the way back of Utf8FromText; nothing where it is not UTF-8 or has a
/// character that the text cannot hold.
std::optional<std::string> TextFromUtf8(std::string_view utf8);

/// Whether the bytes are well-formed UTF-8: no overlong forms, no surrogates, nothing past U+10FFFF.
bool IsUtf8(std::string_view bytes);

/// A path as UTF-8: as it is where it is UTF-8, else read as Windows-1252.
std::string Utf8FromPath(std::string_view path);

/// A path as part of a Windows-1252 text, for a message; characters that it lacks become "?". A path that is
/// not UTF-8 stays as it is.
std::string TextFromPath(std::string_view path);

}  // namespace kelvora
