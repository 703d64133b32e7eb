// The time on this machine's clock, in its time zone, and how the program's files write it.
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace kelvora {

/// Now; the epoch's start where the system knows no local time.
std::chrono::local_seconds LocalTime();

/// "2026-03-09 07:05:00".
std::string LocalTimeText(std::chrono::local_seconds time);

/// "2026-03-09T07:05:00+01:00": that moment on this machine's clock.
std::string ZonedTimeText(std::chrono::system_clock::time_point time);

/// The moment that such a text tells, of any zone, which may be "Z"; nothing for another text.
std::optional<std::chrono::sys_seconds> MomentOf(const std::string& zonedTime);

}  // namespace kelvora
