// Message boxes of commands: notices are diagnostics, questions are answered on standard input.
#pragma once

#include "cli/Console.h"
#include "platform/Prompt.h"

namespace kelvora {

class ConsolePrompt final : public Prompt {
public:
    /// With `yes` every question is answered so, and nothing is read.
    ConsolePrompt(Console& console, bool yes) : console_(console), yes_(yes) {}

    /// Only "y" or "yes" is Yes; anything else, the end of the input too, is the box's default.
    Answer Show(std::string_view title, std::string_view body, BoxStyle style) override;

private:
    Console& console_;
    bool yes_;
};

}  // namespace kelvora
