// The window thread's event loop, as far as the rules need it.
#pragma once

#include <chrono>
#include <functional>

namespace kelvora {

class EventLoop {
public:
    virtual ~EventLoop() = default;

    /// Runs `action` once on the window thread after `delay`, while the loop keeps running. The caller may be
    /// gone by then: the action has to know.
    virtual void After(std::chrono::milliseconds delay, std::function<void()> action) = 0;

protected:
    EventLoop() = default;
    EventLoop(const EventLoop&) = default;
    EventLoop& operator=(const EventLoop&) = default;
};

}  // namespace kelvora
