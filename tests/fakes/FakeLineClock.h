// The clock of a simulated line over the virtual time of a FakeEventLoop.
#pragma once

#include <algorithm>
#include <utility>

#include "bench/LineClock.h"
#include "fakes/FakeEventLoop.h"

namespace kelvora::bench {

class FakeLineClock final : public LineClock {
public:
    explicit FakeLineClock(FakeEventLoop& loop) : loop_(loop) {}

    Time Now() const override { return loop_.Now(); }
    void At(Time due, std::function<void()> action) override
    {
        const Time time = std::max(due, loop_.Now());
        loop_.AfterMicroseconds(std::chrono::ceil<std::chrono::microseconds>(time - loop_.Now()),
                                std::move(action));
    }

private:
    FakeEventLoop& loop_;
};

}  // namespace kelvora::bench
