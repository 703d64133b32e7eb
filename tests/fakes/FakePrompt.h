// A prompt that answers from a script and remembers what was asked.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "platform/Prompt.h"

namespace kelvora {

class FakePrompt final : public Prompt {
public:
    struct Box {
        std::string title;
        std::string body;
        BoxStyle style;
    };

    Answer Show(std::string_view title, std::string_view body, BoxStyle style) override
    {
        shown.push_back({std::string(title), std::string(body), style});
        if (answers.empty())
            return style.defaultAnswer;
        const Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }

    std::deque<Answer> answers;  ///< given in turn; after them the default of each box
    std::vector<Box> shown;
};

}  // namespace kelvora
