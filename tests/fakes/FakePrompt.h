// A prompt that answers from a script and remembers what was asked.
#pragma once

#include <deque>
#include <string>
#include <utility>
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

    /// What the boxes said since the last time.
    std::vector<std::string> TakeBodies()
    {
        std::vector<std::string> bodies;
        for (const Box& box : std::exchange(shown, {}))
            bodies.push_back(box.body);
        return bodies;
    }

    std::deque<Answer> answers;  ///< given in turn; after them the default of each box
    std::vector<Box> shown;
};

}  // namespace kelvora
