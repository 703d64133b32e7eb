#include "comms/LineMonitor.h"

#include <algorithm>
#include <array>

#include "platform/LocalTime.h"
#include "platform/NumberText.h"

namespace kelvora {

namespace {

constexpr std::array<std::string_view, 2> DirectionWords{"sent", "received"};
constexpr std::array<std::string_view, 4> DamageWords{"good", "bad frame", "cut short", "noise"};

std::string OffsetText(std::chrono::minutes offset)
{
    const std::chrono::hh_mm_ss time(offset);
    return (time.is_negative() ? "UTC-" : "UTC+") + PaddedNumber(static_cast<int>(time.hours().count()), 2) +
           ":" + PaddedNumber(static_cast<int>(time.minutes().count()), 2);
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
    const auto local = std::chrono::floor<std::chrono::milliseconds>((time + offset).time_since_epoch());
    const auto second = std::chrono::floor<std::chrono::seconds>(local);
    return LocalTimeText(std::chrono::local_seconds(second)) + "." +
           PaddedNumber(static_cast<int>((local - second).count()), 3);
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
