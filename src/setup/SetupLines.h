// Cutting a text into section heads and keyword lines, shared by the reader of setup files and the reader of
// the language files.
//
// A line ends with a line feed, with or without a carriage return before it; the last one counts without.
// Tabs are blanks. Empty lines, and lines that begin with ":" or "'", are comments. "[name]" is a head.
// Every other line is trimmed and upper-cased; " _" at its end joins it to the next one.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kelvora {

/// One head or keyword line. The texts are valid until the next call of SetupLines::Next.
struct SetupLine {
    enum class Type { Head, Keyword, End };

    Type type = Type::End;
    std::size_t number = 0;    ///< of the line in the text, from 1; a continued line bears its first one's
    std::string_view name{};   ///< the head's name, or the keyword; upper-case
    std::string_view value{};  ///< what follows a keyword's "="; upper-case
};

class SetupLines {
public:
    /// `text` must outlive the object.
    explicit SetupLines(std::string_view text);

    /// The next head or keyword line, or End. Throws SetupError for a carriage return without a line feed, a
    /// head without name or "]", a keyword line without "=", and a continuation that nothing continues.
    SetupLine Next();

private:
    bool ReadRawLine(std::string_view& line);
    SetupLine Head(std::string_view line);
    SetupLine Keyword();

    std::string_view text_;
    std::size_t at_ = 0;
    std::size_t number_ = 0;
    std::size_t firstNumber_ = 0;
    std::string assembled_;  ///< the line being joined from continuations, upper-case
};

}  // namespace kelvora
