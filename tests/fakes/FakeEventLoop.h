// An event loop whose time passes when the test says so, or when a procedure waits.
#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <stdexcept>
#include <utility>

#include "platform/EventLoop.h"

namespace kelvora {

class FakeEventLoop : public EventLoop {
public:
    void After(std::chrono::milliseconds delay, std::function<void()> action) override
    {
        AfterMicroseconds(delay, std::move(action));
    }

    /// For what is finer than the program's own waits: the bytes of a simulated line.
    void AfterMicroseconds(std::chrono::microseconds delay, std::function<void()> action)
    {
        pending_.emplace(now_ + delay, std::move(action));
    }

    /// Lets time pass up to the next thing that is due, and lets it happen. Throws when nothing ever would:
    /// the procedure that waits would hang.
    void Yield() override
    {
        if (pending_.empty())
            throw std::logic_error("waiting for what never comes");
        if (pending_.begin()->first > now_)
            now_ = pending_.begin()->first;
        RunFirst();
    }

    Time Now() const override { return now_; }

    std::unique_ptr<Timer> NewTimer() override;

    /// Lets time pass and runs what falls due on the way.
    void Pass(std::chrono::microseconds time)
    {
        const Time end = now_ + time;
        while (!pending_.empty() && pending_.begin()->first <= end) {
            now_ = std::max(now_, pending_.begin()->first);
            RunFirst();
        }
        now_ = std::max(now_, end);
    }

    /// The program itself takes so long: what falls due meanwhile has to wait.
    void Block(std::chrono::microseconds time) { now_ += time; }

private:
    void RunFirst()
    {
        const auto action = pending_.extract(pending_.begin()).mapped();
        action();
    }

    Time now_{};
    std::multimap<Time, std::function<void()>> pending_;
};

class FakeTimer final : public Timer {
public:
    explicit FakeTimer(FakeEventLoop& loop) : loop_(loop) {}

    void Start(std::chrono::milliseconds interval, std::function<void()> tick) override
    {
        running_ = std::make_shared<std::function<void()>>(std::move(tick));
        Arm(interval, running_);
    }
    void Stop() override { running_.reset(); }
    bool IsRunning() const override { return running_ != nullptr; }

private:
    void Arm(std::chrono::milliseconds interval, const std::weak_ptr<std::function<void()>>& started)
    {
        loop_.After(interval, [this, interval, started] {
            // Without it this may be gone too.
            const auto tick = started.lock();
            if (!tick)
                return;
            Arm(interval, started);
            (*tick)();
        });
    }

    FakeEventLoop& loop_;
    std::shared_ptr<std::function<void()>> running_;  ///< null when it is stopped
};

inline std::unique_ptr<Timer> FakeEventLoop::NewTimer()
{
    return std::make_unique<FakeTimer>(*this);
}

}  // namespace kelvora
