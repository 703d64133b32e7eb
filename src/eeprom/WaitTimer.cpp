#include "eeprom/WaitTimer.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace kelvora {

namespace {

constexpr int LongestWaitMs = 65536;

double TicksOf(int ms)
{
    if (ms == 0)
        return -1;
    return ms < WaitTickMs ? 1 : std::nearbyint(static_cast<double>(ms) / WaitTickMs);
}

}  // namespace

double WaitBudget(int ms)
{
    const int limited = std::min(ms, LongestWaitMs);
    return limited / TicksOf(limited);
}

void WaitTimer::SetTimeout(int ms)
{
    budget_ = WaitBudget(ms);
    timer_->Start(std::chrono::milliseconds(WaitTickMs), [this] { Tick(); });
}

void WaitTimer::Tick()
{
    if (budget_ <= 0)
        timer_->Stop();
    else
        budget_ -= WaitTickMs;
}

}  // namespace kelvora
