// The coarse timer that bounds every wait of the module protocol: it ticks every 55 ms until its budget is
// used up.
#pragma once

#include <memory>

#include "platform/EventLoop.h"

namespace kelvora {

/// Milliseconds between two ticks; from the module protocol.
inline constexpr int WaitTickMs = 55;

/// What a time-out of `ms` may use up, in milliseconds: `ms`, at most 65536, divided by its number of ticks.
/// So 55 ms and more end on the second or third tick, 1 to 54 ms on the second, 0 and less on the first: the
/// modules' waits are sized by that.
double WaitBudget(int ms);

class WaitTimer {
public:
    explicit WaitTimer(EventLoop& loop) : timer_(loop.NewTimer()) {}

    /// Starts a time-out, or starts it anew.
    void SetTimeout(int ms);

    bool IsRunning() const { return timer_->IsRunning(); }

private:
    void Tick();

    std::unique_ptr<Timer> timer_;
    double budget_ = 0;
};

}  // namespace kelvora
