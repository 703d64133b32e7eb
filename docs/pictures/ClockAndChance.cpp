#include "ClockAndChance.h"

#include <atomic>
#include <ctime>
#include <random>

namespace kelvora {

namespace {

using namespace std::chrono_literals;
using std::chrono::system_clock;

constexpr system_clock::time_point Start = std::chrono::sys_days(2026y / std::chrono::March / 9d) + 7h + 5min;

// One for the program, as is the system's that it stands for.
std::atomic<system_clock::time_point> now{Start};

}  // namespace

void SetPictureClock(std::chrono::steady_clock::duration passed)
{
    now = Start + passed;
}

// In the place of the system's own: the linker leads there what the program calls.
// NOLINTBEGIN(bugprone-reserved-identifier, cert-dcl37-c, cert-dcl51-cpp)
system_clock::time_point WrappedNow() __asm__("__wrap__ZNSt6chrono3_V212system_clock3nowEv");
system_clock::time_point WrappedNow()
{
    return now;
}

std::time_t WrappedTime(std::time_t* place) __asm__("__wrap_time");
std::time_t WrappedTime(std::time_t* place)
{
    const std::time_t seconds = system_clock::to_time_t(now);
    if (place)
        *place = seconds;
    return seconds;
}

unsigned WrappedChance(std::random_device* device) __asm__("__wrap__ZNSt13random_device9_M_getvalEv");
unsigned WrappedChance(std::random_device* /*device*/)
{
    static unsigned next = 4690;
    return next++;
}
// NOLINTEND(bugprone-reserved-identifier, cert-dcl37-c, cert-dcl51-cpp)

}  // namespace kelvora
