#include "bench/ByteChannel.h"

#include <algorithm>
#include <utility>

namespace kelvora::bench {

namespace {

// What common serial adapters hold back at most before they hand on what has come.
constexpr std::size_t LongestRun = 14;
constexpr std::chrono::milliseconds LongestRunTime(20);

std::size_t RunLength(const SerialSettings& settings)
{
    const auto fitting = static_cast<std::size_t>(LongestRunTime / settings.TimeOf(1));
    return std::clamp(fitting, std::size_t{1}, LongestRun);
}

}  // namespace

std::chrono::microseconds ByteChannel::TimeOf(const Burst& burst, std::size_t bytes) const
{
    return isPaced_ ? burst.settings.TimeOf(bytes) : std::chrono::microseconds(0);
}

void ByteChannel::Send(std::string bytes, const SerialSettings& settings, bool inRuns)
{
    if (bytes.empty())
        return;
    const LineClock::Time start = std::max(clock_.Now(), end_);
    const std::size_t pacedRun = inRuns ? RunLength(settings) : 1;
    const std::size_t run = isPaced_ ? pacedRun : bytes.size();
    const Burst& burst = bursts_.emplace_back(Burst{std::move(bytes), settings, start, run});
    end_ = start + TimeOf(burst, burst.bytes.size());
    if (bursts_.size() == 1)
        Arm();
}

void ByteChannel::CutOff()
{
    ByteRun run;
    if (!bursts_.empty()) {
        const Burst& burst = bursts_.front();
        std::size_t left = burst.arrived;
        while (left < burst.bytes.size() && burst.start + TimeOf(burst, left + 1) <= clock_.Now())
            ++left;
        run = Take(left - burst.arrived);
    }
    Clear();
    if (!run.bytes.empty() && onRun)
        onRun(run);
}

void ByteChannel::Clear()
{
    next_.Cancel();
    bursts_.clear();
    end_ = clock_.Now();
}

void ByteChannel::Arm()
{
    const Burst& burst = bursts_.front();
    const std::size_t bytes = std::min(burst.runLength, burst.bytes.size() - burst.arrived);
    next_.Set(burst.start + TimeOf(burst, burst.arrived + bytes), [this, bytes] {
        const ByteRun run = Take(bytes);
        if (!bursts_.empty())
            Arm();
        if (onRun)
            onRun(run);
    });
}

// Off the queue before anybody hears of them, for who hears may send or cut off.
ByteRun ByteChannel::Take(std::size_t bytes)
{
    Burst& burst = bursts_.front();
    const LineClock::Time begin = burst.start + TimeOf(burst, burst.arrived);
    const auto quiet = lastArrival_ ? begin - *lastArrival_ : LineClock::Time::duration::max();
    ByteRun run{burst.bytes.substr(burst.arrived, bytes), burst.settings,
                std::chrono::duration_cast<std::chrono::microseconds>(quiet)};
    burst.arrived += bytes;
    lastArrival_ = burst.start + TimeOf(burst, burst.arrived);
    if (burst.arrived == burst.bytes.size())
        bursts_.pop_front();
    return run;
}

}  // namespace kelvora::bench
