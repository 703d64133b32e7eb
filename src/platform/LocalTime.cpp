#include "platform/LocalTime.h"

#include <algorithm>
#include <cstddef>
#include <ctime>

namespace kelvora {

namespace {

// A number of that many digits or more, led by zeros.
std::string Padded(int number, std::size_t digits)
{
    const std::string text = std::to_string(number);
    return std::string(digits - std::min(digits, text.size()), '0') + text;
}

}  // namespace

std::chrono::local_seconds LocalTime()
{
    const std::time_t now = std::time(nullptr);
    const std::tm* const parts = std::localtime(&now);
    if (!parts)
        return {};
    const std::chrono::year_month_day date{std::chrono::year(parts->tm_year + 1900),
                                           std::chrono::month(static_cast<unsigned>(parts->tm_mon) + 1),
                                           std::chrono::day(static_cast<unsigned>(parts->tm_mday))};
    return std::chrono::local_days(date) + std::chrono::hours(parts->tm_hour) +
           std::chrono::minutes(parts->tm_min) + std::chrono::seconds(parts->tm_sec);
}

std::string LocalTimeText(std::chrono::local_seconds time)
{
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    const auto number = [](auto part) { return static_cast<int>(static_cast<unsigned>(part)); };
    const auto count = [](auto part) { return static_cast<int>(part.count()); };
    return Padded(static_cast<int>(date.year()), 4) + '-' + Padded(number(date.month()), 2) + '-' +
           Padded(number(date.day()), 2) + ' ' + Padded(count(clock.hours()), 2) + ':' +
           Padded(count(clock.minutes()), 2) + ':' + Padded(count(clock.seconds()), 2);
}

}  // namespace kelvora
