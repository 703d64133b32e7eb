#include "platform/LocalTime.h"

#include <cstdlib>
#include <ctime>

#include "platform/NumberText.h"

namespace kelvora {

namespace {

// All of it 0 where the system knows no local time.
std::tm PartsOf(std::time_t time)
{
    std::tm parts{};
    localtime_r(&time, &parts);
    return parts;
}

std::chrono::local_seconds LocalTimeOf(const std::tm& parts)
{
    if (parts.tm_mday == 0)
        return {};
    const std::chrono::year_month_day date{std::chrono::year(parts.tm_year + 1900),
                                           std::chrono::month(static_cast<unsigned>(parts.tm_mon) + 1),
                                           std::chrono::day(static_cast<unsigned>(parts.tm_mday))};
    return std::chrono::local_days(date) + std::chrono::hours(parts.tm_hour) +
           std::chrono::minutes(parts.tm_min) + std::chrono::seconds(parts.tm_sec);
}

}  // namespace

std::chrono::local_seconds LocalTime()
{
    return LocalTimeOf(PartsOf(std::time(nullptr)));
}

std::string LocalTimeText(std::chrono::local_seconds time)
{
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    const auto number = [](auto part) { return static_cast<int>(static_cast<unsigned>(part)); };
    const auto count = [](auto part) { return static_cast<int>(part.count()); };
    return PaddedNumber(static_cast<int>(date.year()), 4) + '-' + PaddedNumber(number(date.month()), 2) +
           '-' + PaddedNumber(number(date.day()), 2) + ' ' + PaddedNumber(count(clock.hours()), 2) + ':' +
           PaddedNumber(count(clock.minutes()), 2) + ':' + PaddedNumber(count(clock.seconds()), 2);
}

std::string ZonedTimeText(std::chrono::system_clock::time_point time)
{
    constexpr int Minute = 60;
    const std::tm parts = PartsOf(std::chrono::system_clock::to_time_t(time));
    std::string text = LocalTimeText(LocalTimeOf(parts));
    text[text.find(' ')] = 'T';
    const int minutes = static_cast<int>(parts.tm_gmtoff) / Minute;
    return text + (minutes < 0 ? '-' : '+') + PaddedNumber(std::abs(minutes) / Minute, 2) + ':' +
           PaddedNumber(std::abs(minutes) % Minute, 2);
}

std::optional<std::chrono::sys_seconds> MomentOf(const std::string& zonedTime)
{
    std::tm parts{};
    const char* const end = strptime(zonedTime.c_str(), "%Y-%m-%dT%H:%M:%S%z", &parts);
    if (!end || end != zonedTime.c_str() + zonedTime.size())
        return std::nullopt;
    const std::chrono::seconds zone(parts.tm_gmtoff);
    return std::chrono::sys_seconds(std::chrono::seconds(timegm(&parts))) - zone;
}

}  // namespace kelvora
