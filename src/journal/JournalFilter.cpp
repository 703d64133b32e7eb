#include "journal/JournalFilter.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>

#include "platform/AsciiCase.h"

namespace kelvora {

namespace {

constexpr std::string_view DateForm = "0000-00-00";
constexpr std::string_view TimeForm = "0000-00-00 00:00:00";
constexpr std::size_t ToTheMinute = std::string_view("0000-00-00 00:00").size();

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool HasForm(std::string_view text)
{
    return std::ranges::equal(text, TimeForm.substr(0, text.size()),
                              [](char c, char form) { return form == '0' ? IsDigit(c) : c == form; });
}

int NumberAt(std::string_view text, std::size_t at, std::size_t length)
{
    return std::atoi(std::string(text.substr(at, length)).c_str());
}

bool IsDay(std::string_view text)
{
    using namespace std::chrono;
    return year_month_day(year(NumberAt(text, 0, 4)), month(static_cast<unsigned>(NumberAt(text, 5, 2))),
                          day(static_cast<unsigned>(NumberAt(text, 8, 2))))
        .ok();
}

}  // namespace

bool Matches(const JournalEntry& entry, const JournalFilter& filter)
{
    return (!filter.failedOnly || entry.IsFailure()) &&
           (filter.name.empty() || IsSameButCase(entry.terminal, filter.name)) &&
           (filter.since.empty() || ShownTime(entry).substr(0, filter.since.size()) >= filter.since);
}

bool IsJournalDate(std::string_view text)
{
    const bool isWhole =
        text.size() == DateForm.size() || text.size() == ToTheMinute || text.size() == TimeForm.size();
    return isWhole && HasForm(text) && IsDay(text);
}

std::string ShownTime(const JournalEntry& entry)
{
    std::string time = entry.time.substr(0, TimeForm.size());
    std::ranges::replace(time, 'T', ' ');
    return time;
}

}  // namespace kelvora
