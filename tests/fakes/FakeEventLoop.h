// An event loop whose time passes when the test says so.
#pragma once

#include <map>
#include <utility>

#include "platform/EventLoop.h"

namespace kelvora {

class FakeEventLoop final : public EventLoop {
public:
    void After(std::chrono::milliseconds delay, std::function<void()> action) override
    {
        pending_.emplace(now_ + delay, std::move(action));
    }

    /// Lets time pass and runs what falls due.
    void Pass(std::chrono::milliseconds time)
    {
        now_ += time;
        while (!pending_.empty() && pending_.begin()->first <= now_) {
            const auto action = pending_.extract(pending_.begin()).mapped();
            action();
        }
    }

private:
    std::chrono::milliseconds now_{};
    std::multimap<std::chrono::milliseconds, std::function<void()>> pending_;
};

}  // namespace kelvora
