// The event loop by Qt.
#pragma once

#include "platform/EventLoop.h"

namespace kelvora {

class QtEventLoop final : public EventLoop {
public:
    void After(std::chrono::milliseconds delay, std::function<void()> action) override;
};

}  // namespace kelvora
