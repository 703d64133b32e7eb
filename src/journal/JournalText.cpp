#include "journal/JournalText.h"

#include <simdjson.h>
#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <tuple>
#include <utility>

#include "catalogue/Messages.h"
#include "platform/JsonText.h"
#include "platform/NumberText.h"

namespace kelvora {

namespace {

using Json = nlohmann::ordered_json;

// In the order of JournalEntry::Result.
constexpr std::array ResultNames{"done", "same", "different", "declined", "stopped", "failed"};
static_assert(ResultNames.size() == static_cast<std::size_t>(JournalEntry::Result::Last) + 1);

constexpr std::array ResultTexts{Message::SeriesDone,     Message::SeriesSame,    Message::ResultDifferent,
                                 Message::ResultDeclined, Message::SeriesStopped, Message::SeriesFailed};
static_assert(ResultTexts.size() == ResultNames.size());

struct TextField {
    std::string_view name;
    std::string JournalEntry::*member;
};

constexpr std::array TextFields{
    TextField{"time", &JournalEntry::time},           TextField{"who", &JournalEntry::who},
    TextField{"program", &JournalEntry::program},     TextField{"version", &JournalEntry::version},
    TextField{"operation", &JournalEntry::operation}, TextField{"device", &JournalEntry::device},
    TextField{"terminal", &JournalEntry::terminal},   TextField{"modules", &JournalEntry::modules},
    TextField{"file", &JournalEntry::file},           TextField{"sha256", &JournalEntry::sha256},
    TextField{"message", &JournalEntry::message},     TextField{"backup", &JournalEntry::backup}};

Json TextOrNull(const std::string& text)
{
    return text.empty() ? Json() : Json(text);
}

Json CrcOrNull(const std::optional<std::uint32_t>& crc)
{
    return crc ? Json(HexText(*crc, 8)) : Json();
}

// They stay 0 where they are none; a number with a fraction is none of a line.
void TakeNumbers(const simdjson::dom::object& object, JournalEntry& entry)
{
    constexpr std::uint64_t MostLines = 4;
    std::uint64_t line = 0;
    std::ignore = object["line"].get(line);
    std::ignore = object["seconds"].get(entry.seconds);
    entry.line = line <= MostLines ? static_cast<int>(line) : 0;
}

std::string_view TextOf(const simdjson::dom::object& object, std::string_view name)
{
    std::string_view text;
    return object[name].get(text) == simdjson::SUCCESS ? text : std::string_view();
}

// A journal has lines by the hundred thousand: this parser takes them apart ten times as fast as the one that
// builds trees, and takes memory at the first of them only.
std::optional<JournalEntry> ReadLine(simdjson::dom::parser& parser, std::string_view line)
{
    simdjson::dom::object object;
    if (parser.parse(line.data(), line.size()).get(object) != simdjson::SUCCESS)
        return std::nullopt;
    JournalEntry entry;
    for (const TextField& field : TextFields)
        entry.*(field.member) = TextOf(object, field.name);
    entry.crcBefore = WholeNumber<std::uint32_t>(TextOf(object, "crcBefore"), 16);
    entry.crcAfter = WholeNumber<std::uint32_t>(TextOf(object, "crcAfter"), 16);
    TakeNumbers(object, entry);
    const auto* const result = std::ranges::find(ResultNames, TextOf(object, "result"));
    if (entry.time.empty() || result == ResultNames.end())
        return std::nullopt;
    entry.result = static_cast<JournalEntry::Result>(result - ResultNames.begin());
    return entry;
}

}  // namespace

std::string JournalLine(const JournalEntry& entry)
{
    constexpr double Thousandth = 1000;
    Json object;
    object["time"] = entry.time;
    object["who"] = entry.who;
    object["program"] = entry.program;
    object["version"] = entry.version;
    object["operation"] = entry.operation;
    object["line"] = entry.line;
    object["device"] = TextOrNull(entry.device);
    object["terminal"] = TextOrNull(entry.terminal);
    object["modules"] = TextOrNull(entry.modules);
    object["file"] = TextOrNull(entry.file);
    object["sha256"] = TextOrNull(entry.sha256);
    object["crcBefore"] = CrcOrNull(entry.crcBefore);
    object["crcAfter"] = CrcOrNull(entry.crcAfter);
    object["result"] = ResultName(entry.result);
    object["message"] = entry.message;
    object["backup"] = TextOrNull(entry.backup);
    object["seconds"] = static_cast<double>(static_cast<long>(entry.seconds * Thousandth)) / Thousandth;
    return JsonText(object) + "\n";
}

std::optional<JournalEntry> ReadJournalLine(std::string_view line)
{
    simdjson::dom::parser parser;
    return ReadLine(parser, line);
}

void TakeJournalText(JournalContent& content, std::string_view text)
{
    // Some editors put it before all.
    constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(ByteOrderMark))
        text.remove_prefix(ByteOrderMark.size());
    simdjson::dom::parser parser;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        if (line.empty())
            continue;
        if (auto entry = ReadLine(parser, line))
            content.entries.push_back(*std::move(entry));
        else
            ++content.damaged;
    }
}

const char* ResultName(JournalEntry::Result result)
{
    return ResultNames.at(static_cast<std::size_t>(result));
}

std::string ResultText(const MessageCatalogue& catalogue, JournalEntry::Result result)
{
    return catalogue.Caption(ResultTexts.at(static_cast<std::size_t>(result)));
}

}  // namespace kelvora
