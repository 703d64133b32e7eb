// How long an upload of the flash takes, in times of the bare bytes' own time at 9600 baud, from the first
// block's command to the last block's answer: on a whole line, and with one damaged byte in a thousand. The
// line is simulated and its time is virtual, so the figures are the same on every machine.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <optional>

#include "RandomMemory.h"
#include "comms/LineDrivers.h"
#include "fakes/BenchLine.h"

namespace kelvora {

namespace {

// Nothing when the upload failed or has brought other bytes.
std::optional<double> UploadRatio(std::uint64_t seed, double damage)
{
    bench::LineOptions options;
    options.faults.seed = seed;
    options.faults.drop = options.faults.flip = options.faults.duplicate = damage / 3;
    FakeEventLoop loop;
    bench::FakeLineClock clock(loop);
    bench::SimulatedLine line(clock, RandomMemory(seed), options);
    bench::SimulatedPort port(line);
    SerialLink link(port, loop);
    Comms comms(loop, {&link, nullptr, nullptr, nullptr});
    EventLoop::Time start;
    EventLoop::Time end;
    LineHooks hooks;
    hooks.progress = [&](const LineProgress& progress) { (progress.done == 0 ? start : end) = loop.Now(); };
    const LineResult result = Upload(comms, {1, "9600,n,8,1", 0}, hooks);
    const auto& flash = line.Memory().flash;
    if (!result.IsDone() || result.image != std::string(flash.begin(), flash.end()))
        return std::nullopt;
    return std::chrono::duration<double>(end - start) / SerialSettings().TimeOf(flash.size());
}

// One upload for each seed; all of them are to succeed.
void UploadOver(benchmark::State& state, double damage, std::uint64_t seeds)
{
    double sum = 0;
    double longest = 0;
    std::uint64_t failed = 0;
    for ([[maybe_unused]] auto iteration : state)
        for (std::uint64_t seed = 1; seed <= seeds; ++seed) {
            const auto ratio = UploadRatio(seed, damage);
            failed += ratio ? 0 : 1;
            sum += ratio.value_or(0);
            longest = std::max(longest, ratio.value_or(0));
        }
    state.counters["times_bare"] = sum / static_cast<double>(std::max<std::uint64_t>(seeds - failed, 1));
    state.counters["longest"] = longest;
    state.counters["failed"] = static_cast<double>(failed);
}
BENCHMARK_CAPTURE(UploadOver, WholeLine, 0, 1)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(UploadOver, NoisyLine, 0.001, 100)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace kelvora
