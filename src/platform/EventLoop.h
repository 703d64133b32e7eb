// The window thread's event loop, its clock and its timers, as far as the rules need them.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace kelvora {

/// A timer that ticks in even intervals while the event loop runs.
class Timer {
public:
    virtual ~Timer() = default;

    /// Calls `tick` after each interval from now on, until stopped or started anew.
    virtual void Start(std::chrono::milliseconds interval, std::function<void()> tick) = 0;
    /// No tick comes after this.
    virtual void Stop() = 0;
    virtual bool IsRunning() const = 0;
};

class EventLoop {
public:
    using Time = std::chrono::steady_clock::time_point;

    virtual ~EventLoop() = default;

    /// Runs `action` once on the window thread after `delay`, while the loop keeps running. The caller may be
    /// gone by then: the action has to know.
    virtual void After(std::chrono::milliseconds delay, std::function<void()> action) = 0;

    /// Lets what is due happen; when nothing is, waits for the next thing. For procedures that wait in the
    /// middle of their work: bytes, ticks and the user's commands arrive here and nowhere else.
    virtual void Yield() = 0;

    /// Never goes back; stands still while the machine is suspended.
    virtual Time Now() const = 0;

    virtual std::unique_ptr<Timer> NewTimer() = 0;
};

}  // namespace kelvora
