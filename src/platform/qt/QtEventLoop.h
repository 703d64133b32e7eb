// The event loop by Qt.
#pragma once

#include "platform/EventLoop.h"

namespace kelvora {

class QtEventLoop final : public EventLoop {
public:
    void After(std::chrono::milliseconds delay, std::function<void()> action) override;
    void Yield() override;
    Time Now() const override;
    std::unique_ptr<Timer> NewTimer() override;
};

}  // namespace kelvora
