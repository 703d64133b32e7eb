#include "flash/BackupTitle.h"

#include <array>
#include <charconv>

#include "platform/LocalTime.h"
#include "platform/PortName.h"

namespace kelvora {

namespace {

constexpr std::string_view PortMark = ", ";

// The number at the front of `text`, 0 for none; `text` loses it and the mark behind it. Nothing where that
// mark does not stand there.
std::optional<unsigned> TakeNumber(std::string_view& text, std::string_view mark)
{
    unsigned number{};
    const char* const end = std::from_chars(text.begin(), text.end(), number).ptr;
    text.remove_prefix(static_cast<std::size_t>(end - text.begin()));
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
    std::array<unsigned, Marks.size()> numbers{};
    const bool hasPort = rest.starts_with(PortWord);
    if (hasPort)
        rest.remove_prefix(PortWord.size());
    for (std::size_t i = hasPort ? 0 : 1; i < Marks.size(); ++i) {
        const auto number = TakeNumber(rest, Marks.at(i));
        if (!number)
            return std::nullopt;
        numbers.at(i) = *number;
    }
    const auto [port, year, month, day, hours, minutes, seconds] = numbers;
    const std::chrono::year_month_day date{std::chrono::year(static_cast<int>(year)),
                                           std::chrono::month(month), std::chrono::day(day)};
    if (!date.ok())
        return std::nullopt;
    const BackupOrigin origin{static_cast<int>(port),
                              std::chrono::local_days(date) + std::chrono::hours(hours) +
                                  std::chrono::minutes(minutes) + std::chrono::seconds(seconds)};
    // Other ways to write the same, such as a 25th hour or no number, are no title of a dump.
    if (BackupTitle(origin) != title)
        return std::nullopt;
    return origin;
}

}  // namespace kelvora
