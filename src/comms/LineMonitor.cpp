#include "comms/LineMonitor.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace kelvora {

namespace {

constexpr std::array<std::string_view, 2> DirectionWords{"sent", "received"};
constexpr std::array<std::string_view, 4> DamageWords{"good", "bad frame", "cut short", "noise"};
constexpr std::string_view HexDigits = "0123456789ABCDEF";

std::string Digits(int value, std::size_t count)
{
    const std::string digits = std::to_string(value);
    return std::string(count - std::min(count, digits.size()), '0') + digits;
}

std::string OffsetText(std::chrono::minutes offset)
{
    const int minutes = std::abs(static_cast<int>(offset.count()));
    return (offset.count() < 0 ? "UTC-" : "UTC+") + Digits(minutes / 60, 2) + ":" + Digits(minutes % 60, 2);
}

void AppendEntry(std::string& text, const LineEntry& entry, std::chrono::minutes offset)
{
    text += TimeText(entry.time, offset);
    text += "\tCOM" + std::to_string(entry.line) + "\t";
    text += DirectionWords.at(static_cast<std::size_t>(entry.direction));
    text += '\t';
    text += DamageWords.at(static_cast<std::size_t>(entry.damage));
    text += '\t';
    // A meaning may quote what came: no byte of it may break the line or its columns.
    std::ranges::transform(entry.meaning, std::back_inserter(text),
                           [](char c) { return static_cast<unsigned char>(c) < ' ' ? '.' : c; });
    text += '\t';
    text += HexBytes(entry.bytes) + "\t" + CharacterText(entry.bytes) + "\r\n";
}

}  // namespace

void LineMonitor::Add(int line, const LineTraffic& traffic, std::string_view meaning)
{
    entries_.push_back(
        std::make_shared<const LineEntry>(LineEntry{clock_(), line, traffic.direction, traffic.damage,
                                                    std::string(traffic.bytes), std::string(meaning)}));
    bytes_ += traffic.bytes.size() + meaning.size();
    while (entries_.size() > 1 && (entries_.size() > MaximumEntries || bytes_ > MaximumBytes))
        ForgetFirst();
    if (onChange)
        onChange();
}

void LineMonitor::ForgetFirst()
{
    bytes_ -= entries_.front()->bytes.size() + entries_.front()->meaning.size();
    entries_.pop_front();
    ++firstNumber_;
}

void LineMonitor::Clear()
{
    while (!entries_.empty())
        ForgetFirst();
    if (onChange)
        onChange();
}

std::string TimeText(std::chrono::system_clock::time_point time, std::chrono::minutes offset)
{
    using namespace std::chrono;
    const auto local = floor<milliseconds>(time + offset);
    const auto day = floor<days>(local);
    const year_month_day date(day);
    const hh_mm_ss clock(local - day);
    return Digits(static_cast<int>(date.year()), 4) + "-" +
           Digits(static_cast<int>(static_cast<unsigned>(date.month())), 2) + "-" +
           Digits(static_cast<int>(static_cast<unsigned>(date.day())), 2) + " " +
           Digits(static_cast<int>(clock.hours().count()), 2) + ":" +
           Digits(static_cast<int>(clock.minutes().count()), 2) + ":" +
           Digits(static_cast<int>(clock.seconds().count()), 2) + "." +
           Digits(static_cast<int>(clock.subseconds().count()), 3);
}

std::string HexBytes(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size() * 3);
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        if (!text.empty())
            text += ' ';
        text += HexDigits[code >> 4U];
        text += HexDigits[code & 15U];
    }
    return text;
}

std::string CharacterText(std::string_view bytes)
{
    std::string text(bytes);
    std::ranges::replace_if(
        text, [](char c) { return c < ' ' || c > '~'; }, '.');
    return text;
}

std::string LineMonitorText(const LineEntries& entries, std::chrono::minutes offset)
{
    std::string text =
        "Time (" + OffsetText(offset) + ")\tPort\tDirection\tDamage\tMeaning\tBytes\tCharacters\r\n";
    for (const auto& entry : entries)
        AppendEntry(text, *entry, offset);
    return text;
}

}  // namespace kelvora
