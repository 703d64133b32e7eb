// How much memory an open setup window holds. Runs before the other benchmarks, whose freed memory it would
// be given otherwise: what it holds would not show.
#include <unistd.h>

#include <algorithm>
#include <fstream>

#include "Workplace.h"

namespace kelvora {

namespace {

constexpr int Warming = 10;
constexpr int Windows = 100;

/// The most that an open setup window may hold.
constexpr double MostKiB = 1024;

/// What the process holds in memory, in KiB.
double ResidentKiB()
{
    std::ifstream statm("/proc/self/statm");
    long size = 0;
    long resident = 0;
    statm >> size >> resident;
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1024;
}

// The first windows bring what all share; of the others each hundred is to cost the same.
void MemoryOfSetupWindows(benchmark::State& state)
{
    for ([[maybe_unused]] auto iteration : state) {
        Workplace place;
        place.Open(Warming);
        const double before = ResidentKiB();
        place.Open(Windows);
        const double middle = ResidentKiB();
        place.Open(Windows);
        const double after = ResidentKiB();
        const double earlier = (middle - before) / Windows;
        const double later = (after - middle) / Windows;
        state.counters["earlierKiB"] = earlier;
        state.counters["laterKiB"] = later;
        if (std::max(earlier, later) > MostKiB)
            state.SkipWithError("an open setup window holds more than 1 MB");
    }
}
BENCHMARK(MemoryOfSetupWindows)->Iterations(1)->Repetitions(1)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace kelvora
