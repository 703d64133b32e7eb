// The clock of a simulated line. Its bytes are finer than a millisecond, which the program's own event loop
// does not tell apart. Tests put virtual time behind it, kelvora-bench the real one.
#pragma once

#include <chrono>
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

protected:
    LineClock() = default;
    LineClock(const LineClock&) = default;
    LineClock& operator=(const LineClock&) = default;
};

/// One thing that is to happen later and can be called off; it does not happen when this is gone by then.
class Appointment {
public:
    explicit Appointment(LineClock& clock) : clock_(clock) {}

    /// Runs `action` at `due` in place of what was set before.
    void Set(LineClock::Time due, std::function<void()> action)
    {
        action_ = std::make_shared<std::function<void()>>(std::move(action));
        clock_.At(due, [entry = std::weak_ptr(action_)] {
            if (const auto present = entry.lock())
                std::exchange(*present, nullptr)();
        });
    }
    void Cancel() { action_.reset(); }
    bool IsSet() const { return action_ && *action_; }

private:
    LineClock& clock_;
    std::shared_ptr<std::function<void()>> action_;
};

}  // namespace kelvora::bench
