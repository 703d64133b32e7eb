// Message boxes of commands: notices are diagnostics, questions are answered on the terminal.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "cli/Console.h"
#include "platform/Prompt.h"

namespace kelvora {

class ConsolePrompt final : public Prompt {
public:
    /// `ask` puts a question to the user, true being Yes; while it is empty every question is answered so.
    ConsolePrompt(Console& console, std::function<bool(const std::string&)> ask)
        : console_(console), ask_(std::move(ask))
    {
    }

    /// Any answer but Yes is the box's default.
    Answer Show(std::string_view title, std::string_view body, BoxStyle style) override;

private:
    Console& console_;
    std::function<bool(const std::string&)> ask_;
};

}  // namespace kelvora
