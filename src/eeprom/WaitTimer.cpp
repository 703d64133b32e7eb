#include "eeprom/WaitTimer.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace kelvora {

namespace {

constexpr int LongestWaitMs = 65536;

}  // namespace

double WaitBudget(int ms)
{
    const int limited = std::min(ms, LongestWaitMs);
    return limited / std::max(1.0, std::nearbyint(static_cast<double>(limited) / WaitTickMs));
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
