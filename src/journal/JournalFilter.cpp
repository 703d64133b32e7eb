#include "journal/JournalFilter.h"

#include <algorithm>
#include <chrono>

#include "platform/AsciiCase.h"
#include "platform/LocalTime.h"

namespace kelvora {

namespace {

constexpr std::string_view Midnight = "0000-00-00 00:00:00";
constexpr std::size_t ToTheDay = std::string_view("0000-00-00").size();
constexpr std::size_t ToTheMinute = std::string_view("0000-00-00 00:00").size();

}  // namespace

bool Matches(const JournalEntry& entry, const JournalFilter& filter)
{
    return (!filter.failedOnly || entry.IsFailure()) &&
           (filter.name.empty() || IsSameButCase(entry.terminal, filter.name)) &&
           (filter.since.empty() || ShownTime(entry).substr(0, filter.since.size()) >= filter.since);
}

bool IsJournalDate(std::string_view text)
{
    if (text.size() != ToTheDay && text.size() != ToTheMinute && text.size() != Midnight.size())
        return false;
    const std::string whole = std::string(text).append(Midnight.substr(text.size()));
    // A day that its month has not is another one when it is written again.
    const auto moment = MomentOf(std::string(whole).replace(ToTheDay, 1, "T") + "Z");
    return moment && LocalTimeText(std::chrono::local_seconds(moment->time_since_epoch())) == whole;
}

std::string ShownTime(const JournalEntry& entry)
{
    std::string time = entry.time.substr(0, Midnight.size());
    std::ranges::replace(time, 'T', ' ');
    return time;
}

}  // namespace kelvora
