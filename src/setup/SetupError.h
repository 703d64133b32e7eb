// Why a text was rejected: the numbered error, the line, and what was expected there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>

namespace kelvora {

/// Error numbers of the program's own range: the object-error base plus an offset.
namespace SetupErrorNumber {
inline constexpr std::uint32_t ModuleRefused = 0x80040104;  ///< a module section that cannot be added
inline constexpr std::uint32_t LineRejected = 0x80040107;   ///< every other rejected line or value
}  // namespace SetupErrorNumber

/// What a reader expected where it stopped.
enum class Expected {
    LineFeed,
    SectionName,
    MasterFirst,
    Room,
    OneOfAKind,
    KeyAndValue,
    KnownKey,
    KeyOfSection,
    YesOrNo,
    OnOrOff,
    Tracks,
    Separator,
    KeyMapSize,
    WholeKeys,
    KeyMapLetter,
    Continuation,
    LanguageCode,
    Last = LanguageCode,
};

class SetupError : public std::runtime_error {
public:
    SetupError(std::uint32_t number, std::size_t line, Expected expected)
        : std::runtime_error("rejected setup text"), number_(number), line_(line), expected_(expected)
    {
    }

    std::uint32_t Number() const { return number_; }  ///< one of SetupErrorNumber
    std::size_t Line() const { return line_; }        ///< counts from 1; 0 where no line of a file is meant
    Expected ExpectedHere() const { return expected_; }

private:
    std::uint32_t number_;
    std::size_t line_;
    Expected expected_;
};

/// Rejects a line of a text; `line` counts from 1, or is 0 where no line of a file is meant.
[[noreturn]] inline void RejectLine(std::size_t line, Expected expected)
{
    throw SetupError(SetupErrorNumber::LineRejected, line, expected);
}

}  // namespace kelvora
