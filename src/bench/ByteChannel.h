// One direction of a simulated line: bytes leave one after another at the speed of the line. They arrive in
// short runs, as from the buffer of a serial adapter, so that much traffic costs little; no byte arrives
// before its time, and the last one of what was sent together arrives exactly at it.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <optional>
#include <string>

#include "bench/LineClock.h"
#include "platform/SerialSettings.h"

namespace kelvora::bench {

/// Bytes that arrive together.
struct ByteRun {
    std::string bytes;
    SerialSettings settings;            ///< that they were sent at
    std::chrono::microseconds quiet{};  ///< between the byte before and the first of these
};

class ByteChannel {
public:
    /// `clock` outlives this. Without pacing all bytes arrive at once.
    ByteChannel(LineClock& clock, bool isPaced) : clock_(clock), isPaced_(isPaced), next_(clock) {}

    /// Queues bytes behind those that are on their way. Without `inRuns` they arrive one by one.
    void Send(std::string bytes, const SerialSettings& settings, bool inRuns);

    /// Delivers the bytes that have left by now, and forgets those that have not.
    void CutOff();

    /// Delivers nothing of what is on its way.
    void Clear();

    std::function<void(const ByteRun&)> onRun;

private:
    struct Burst {
        std::string bytes;
        SerialSettings settings;
        LineClock::Time start;
        std::size_t runLength;
        std::size_t arrived = 0;
    };

    std::chrono::microseconds TimeOf(const Burst& burst, std::size_t bytes) const;
    void Arm();
    ByteRun Take(std::size_t bytes);

    LineClock& clock_;
    bool isPaced_;
    Appointment next_;
    std::deque<Burst> bursts_;
    LineClock::Time end_{};  ///< when all that is queued has left
    std::optional<LineClock::Time> lastArrival_;
};

}  // namespace kelvora::bench
