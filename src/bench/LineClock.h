// The clock of a simulated line. Its bytes are finer than a millisecond, which the program's own event loop
// does not tell apart. Tests put virtual time behind it, kelvora-bench the real one.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

namespace kelvora::bench {

class LineClock {
public:
    using Time = std::chrono::steady_clock::time_point;

    virtual ~LineClock() = default;

    /// Never goes back.
    virtual Time Now() const = 0;

    /// Runs `action` once when `due` has come, or at the next turn when it is past; never inside this call.
    virtual void At(Time due, std::function<void()> action) = 0;
};

/// One thing that is to happen later and can be called off; it does not happen when this is gone by then.
class Appointment {
public:
    explicit Appointment(LineClock& clock) : clock_(clock), state_(std::make_shared<State>()) {}

    /// Runs `action` at `due` in place of what was set before.
    void Set(LineClock::Time due, std::function<void()> action)
    {
        state_->action = std::move(action);
        clock_.At(due, [entry = std::weak_ptr(state_), number = ++state_->number] {
            const auto state = entry.lock();
            if (state && state->action && state->number == number)
                std::exchange(state->action, nullptr)();
        });
    }
    /// The same after `delay`; without one, at once.
    void SetAfter(LineClock::Time::duration delay, std::function<void()> action)
    {
        Cancel();
        if (delay > LineClock::Time::duration::zero())
            Set(clock_.Now() + delay, std::move(action));
        else
            action();
    }
    void Cancel() { state_->action = nullptr; }
    bool IsSet() const { return static_cast<bool>(state_->action); }

private:
    struct State {
        std::function<void()> action;
        std::uint64_t number = 0;  ///< of what was set last
    };

    LineClock& clock_;
    std::shared_ptr<State> state_;
};

}  // namespace kelvora::bench
