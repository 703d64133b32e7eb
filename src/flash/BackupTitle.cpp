#include "flash/BackupTitle.h"

#include <array>
#include <charconv>

#include "platform/LocalTime.h"
#include "platform/PortName.h"

namespace kelvora {

namespace {

constexpr std::string_view PortMark = ", ";

// The number at the front of `text`, which loses it and the mark behind it; nothing where that does not stand
// there.
std::optional<int> TakeNumber(std::string_view& text, std::string_view mark)
{
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || number < 0)
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    if (!text.starts_with(mark))
        return std::nullopt;
    text.remove_prefix(mark.size());
    return number;
}

}  // namespace

std::string BackupTitle(const BackupOrigin& origin)
{
    return (origin.port == 0 ? std::string() : PortName(origin.port) + std::string(PortMark)) +
           LocalTimeText(origin.time);
}

std::optional<BackupOrigin> OriginOf(std::string_view title)
{
    std::string_view rest = title;
    // Port, year, month, day, hours, minutes, seconds, and what stands behind each.
    constexpr std::array<std::string_view, 7> Marks{PortMark, "-", "-", " ", ":", ":", ""};
    std::array<int, Marks.size()> numbers{};
    const bool hasPort = rest.starts_with(PortWord);
    if (hasPort)
        rest.remove_prefix(PortWord.size());
    for (std::size_t i = hasPort ? 0 : 1; i < Marks.size(); ++i) {
        const auto number = TakeNumber(rest, Marks.at(i));
        if (!number || *number > 9999)
            return std::nullopt;
        numbers.at(i) = *number;
    }
    const auto [port, year, month, day, hours, minutes, seconds] = numbers;
    const std::chrono::year_month_day date{std::chrono::year(year),
                                           std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    if (!date.ok())
        return std::nullopt;
    const BackupOrigin origin{port, std::chrono::local_days(date) + std::chrono::hours(hours) +
                                        std::chrono::minutes(minutes) + std::chrono::seconds(seconds)};
    // Other ways to write the same, such as a 25th hour, are no title of a dump.
    if (BackupTitle(origin) != title)
        return std::nullopt;
    return origin;
}

}  // namespace kelvora
