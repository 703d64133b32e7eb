// What passed over the lines lately: the memory behind the line monitor's window, and its text for support.
// Who talks on a line holds a pointer to it, null while nobody watches: watching costs nothing then.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "comms/LineTraffic.h"

namespace kelvora {

struct LineEntry {
    std::chrono::system_clock::time_point time;
    int line = 1;  ///< COM1 = 1
    LineTraffic::Direction direction = LineTraffic::Direction::Sent;
    LineTraffic::Damage damage = LineTraffic::Damage::None;
    std::string bytes;
    std::string meaning;  ///< in English, such as "command $9902"; may be empty
};

/// Entries are shared with those that show them, so that they stay while they are shown.
using LineEntries = std::deque<std::shared_ptr<const LineEntry>>;

class LineMonitor {
public:
    using Clock = std::function<std::chrono::system_clock::time_point()>;

    /// A day of a busy line, at a few MiB.
    static constexpr std::size_t MaximumEntries = 10'000;
    static constexpr std::size_t MaximumBytes = std::size_t{4} << 20;

    explicit LineMonitor(Clock clock = std::chrono::system_clock::now) : clock_(std::move(clock)) {}

    /// Remembers what has just passed. The oldest entries go when there are more than MaximumEntries, or when
    /// their bytes and meanings are more than MaximumBytes; the newest one always stays.
    void Add(int line, const LineTraffic& traffic, std::string_view meaning);

    void Clear();

    const LineEntries& Entries() const { return entries_; }

    /// The running number of the first entry that is remembered; it grows with each that is forgotten.
    std::uint64_t FirstNumber() const { return firstNumber_; }

    /// Called after each change. Entries come in bursts: who draws them should draw later, once for many.
    std::function<void()> onChange;

private:
    void ForgetFirst();

    Clock clock_;
    LineEntries entries_;
    std::size_t bytes_ = 0;
    std::uint64_t firstNumber_ = 0;
};

/// "2026-01-31 23:59:59.123" that far east of Greenwich.
std::string TimeText(std::chrono::system_clock::time_point time, std::chrono::minutes offset);

/// The bytes as characters; what is not a visible ASCII character is ".".
std::string CharacterText(std::string_view bytes);

/// What support asks a technician for: a heading with the time zone, then one line an entry, its columns
/// parted by tabs. In English. Lines end with CR LF.
std::string LineMonitorText(const LineEntries& entries, std::chrono::minutes offset);

}  // namespace kelvora
