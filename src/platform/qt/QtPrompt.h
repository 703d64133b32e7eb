// Message boxes by Qt, over the window that is active.
#pragma once

#include "platform/Prompt.h"

namespace kelvora {

class QtPrompt final : public Prompt {
public:
    Answer Show(std::string_view title, std::string_view body, BoxStyle style) override;
};

}  // namespace kelvora
