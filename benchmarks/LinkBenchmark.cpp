// How long an upload of the flash takes, in times of the bare bytes' own time at 9600 baud, from the first
// block's command to the last block's answer: on a whole line, and with one damaged byte in a thousand. The
// line is simulated and its time is virtual, so the figures are the same on every machine.
#include <benchmark/benchmark.h>

#include <random>

#include "comms/LineDrivers.h"
#include "fakes/BenchLine.h"

namespace kelvora {

namespace {

constexpr std::size_t ImageSize = 8192;

bench::LineState RandomMemory(std::uint64_t seed)
{
    bench::LineState memory = bench::FreshLine(BenchLine::AllModules());
    std::mt19937_64 random(seed);
    for (auto& byte : memory.flash)
        byte = static_cast<std::uint8_t>(random());
    return memory;
}

// Nothing when the upload failed.
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
    if (!Upload(comms, {1, "9600,n,8,1", 0}, hooks).IsDone())
        return std::nullopt;
    return std::chrono::duration<double>(end - start) / SerialSettings().TimeOf(ImageSize);
}

void UploadOverCleanLine(benchmark::State& state)
{
    double ratio = 0;
    for (auto _ : state)
        ratio = UploadRatio(1, 0).value();
    state.counters["times_bare"] = ratio;
}
BENCHMARK(UploadOverCleanLine)->Iterations(1)->Unit(benchmark::kMillisecond);

void UploadOverNoisyLine(benchmark::State& state)
{
    constexpr std::uint64_t Seeds = 100;
    double sum = 0;
    double longest = 0;
    std::uint64_t failed = 0;
    for (auto _ : state)
        for (std::uint64_t seed = 1; seed <= Seeds; ++seed) {
            const auto ratio = UploadRatio(seed, 0.001);
            failed += ratio ? 0 : 1;
            sum += ratio.value_or(0);
            longest = std::max(longest, ratio.value_or(0));
        }
    state.counters["times_bare"] = sum / static_cast<double>(Seeds - failed);
    state.counters["longest"] = longest;
    state.counters["failed"] = static_cast<double>(failed);
}
BENCHMARK(UploadOverNoisyLine)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace kelvora
