// A reply time-out clock: its tag holds the milliseconds that remain, each tick takes the interval off, and
// at zero or below it disables itself.
#pragma once

#include <functional>
#include <memory>

#include "platform/EventLoop.h"

namespace kelvora {

class CountdownTimer {
public:
    static constexpr std::chrono::milliseconds Interval{100};

    explicit CountdownTimer(EventLoop& loop) : timer_(loop.NewTimer()) {}

    /// Counts down from `milliseconds`.
    void Enable(int milliseconds)
    {
        tag_ = milliseconds;
        timer_->Start(Interval, [this] {
            tag_ -= static_cast<int>(Interval.count());
            if (tag_ <= 0)
                timer_->Stop();
            if (onTick)
                onTick();
        });
    }
    void Disable() { timer_->Stop(); }
    bool Enabled() const { return timer_->IsRunning(); }
    int Tag() const { return tag_; }

    /// Called at each tick, after the tag has changed.
    std::function<void()> onTick;

private:
    std::unique_ptr<Timer> timer_;
    int tag_ = 0;
};

}  // namespace kelvora
