// An event loop whose time passes when the test says so, or when a procedure waits.
#pragma once

#include <algorithm>
#include <cstdint>
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
    explicit FakeTimer(FakeEventLoop& loop) : loop_(loop), state_(std::make_shared<State>()) {}
    FakeTimer(const FakeTimer&) = delete;
    FakeTimer& operator=(const FakeTimer&) = delete;
    ~FakeTimer() override { Stop(); }

    void Start(std::chrono::milliseconds interval, std::function<void()> tick) override
    {
        state_->tick = std::move(tick);
        state_->running = true;
        Arm(loop_, state_, interval, ++state_->start);
    }
    void Stop() override
    {
        state_->running = false;
        ++state_->start;
    }
    bool IsRunning() const override { return state_->running; }

private:
    struct State {
        std::function<void()> tick;
        bool running = false;
        std::uint64_t start = 0;
    };

    static void Arm(FakeEventLoop& loop, std::shared_ptr<State> state, std::chrono::milliseconds interval,
                    std::uint64_t start)
    {
        loop.After(interval, [&loop, state, interval, start] {
            if (state->start != start)
                return;
            Arm(loop, state, interval, start);
            const auto tick = state->tick;
            tick();
        });
    }

    FakeEventLoop& loop_;
    std::shared_ptr<State> state_;
};

inline std::unique_ptr<Timer> FakeEventLoop::NewTimer()
{
    return std::make_unique<FakeTimer>(*this);
}

}  // namespace kelvora
