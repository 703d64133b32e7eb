#include "journal/JournalText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <future>
#include <iterator>
#include <nlohmann/json.hpp>
#include <thread>
#include <utility>

#include "catalogue/Messages.h"
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

// An entry that is filled name by name, whatever reads them.
class EntryBuilder {
public:
    JournalEntry entry;

    bool IsWhole() const { return hasTime_ && hasResult_; }

    void TakeNumber(std::string_view name, double value)
    {
        constexpr double MostLines = 4;
        if (name == "line" && value >= 0 && value <= MostLines)
            entry.line = static_cast<int>(value);
        else if (name == "seconds")
            entry.seconds = value;
    }

    void TakeText(std::string_view name, std::string_view text)
    {
        const auto* const field = std::ranges::find(TextFields, name, &TextField::name);
        if (field != TextFields.end()) {
            entry.*(field->member) = text;
            hasTime_ = hasTime_ || field->member == &JournalEntry::time;
        } else if (name == "crcBefore") {
            entry.crcBefore = WholeNumber<std::uint32_t>(text, 16);
        } else if (name == "crcAfter") {
            entry.crcAfter = WholeNumber<std::uint32_t>(text, 16);
        } else if (name == "result") {
            const auto* const known =
                std::ranges::find(ResultNames, text, [](const char* each) { return std::string_view(each); });
            hasResult_ = known != ResultNames.end();
            entry.result = hasResult_ ? static_cast<JournalEntry::Result>(known - ResultNames.begin())
                                      : JournalEntry::Result::Failed;
        }
    }

private:
    bool hasTime_ = false;
    bool hasResult_ = false;
};

// Reads a line of the plain form that nearly all have: one object, and in it texts of visible ASCII
// characters without escapes, numbers and null, with no blanks between. Ten times as fast as the parser,
// which is asked about all others.
class PlainReader {
public:
    explicit PlainReader(std::string_view line) : rest_(line) {}

    bool Read(EntryBuilder& builder)
    {
        if (!Take('{'))
            return false;
        do {
            std::string_view name;
            if (!TakeText(name) || !Take(':') || !TakeValue(name, builder))
                return false;
        } while (Take(','));
        return rest_ == "}";
    }

private:
    bool Take(char c)
    {
        if (rest_.empty() || rest_.front() != c)
            return false;
        rest_.remove_prefix(1);
        return true;
    }

    bool TakeText(std::string_view& text)
    {
        if (!Take('"'))
            return false;
        const auto* const end =
            std::ranges::find_if(rest_, [](char c) { return c == '"' || c == '\\' || c < ' ' || c > '~'; });
        if (end == rest_.end() || *end != '"')
            return false;
        text = rest_.substr(0, static_cast<std::size_t>(end - rest_.begin()));
        rest_.remove_prefix(text.size() + 1);
        return true;
    }

    bool TakeValue(std::string_view name, EntryBuilder& builder)
    {
        constexpr std::string_view Null = "null";
        if (rest_.starts_with('"')) {
            std::string_view text;
            if (!TakeText(text))
                return false;
            builder.TakeText(name, text);
            return true;
        }
        if (rest_.starts_with(Null)) {
            rest_.remove_prefix(Null.size());
            return true;
        }
        double value = 0;
        const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
        // Its names for what is no number are none of JSON's.
        if (error != std::errc() || !std::isfinite(value))
            return false;
        rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
        builder.TakeNumber(name, value);
        return true;
    }

    std::string_view rest_;
};

// Reads a line of any form.
EntryBuilder ReadTree(std::string_view line)
{
    EntryBuilder builder;
    const auto object = nlohmann::json::parse(line, nullptr, false);
    if (!object.is_object())
        return builder;
    for (const auto& [name, value] : object.items()) {
        if (value.is_string())
            builder.TakeText(name, value.get_ref<const std::string&>());
        else if (value.is_number())
            builder.TakeNumber(name, value.get<double>());
    }
    return builder;
}

/// Bytes that an entry takes at least, but for odd ones: tells about how many there are.
constexpr std::size_t ShortEntry = 400;

JournalContent ReadPart(std::string_view text)
{
    JournalContent content;
    content.entries.reserve(text.size() / ShortEntry + 1);
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.empty())
            continue;
        if (auto entry = ReadJournalLine(line))
            content.entries.push_back(*std::move(entry));
        else
            ++content.damaged;
    }
    return content;
}

// The text in about equal parts of whole lines.
std::vector<std::string_view> PartsOf(std::string_view text, std::size_t count)
{
    std::vector<std::string_view> parts;
    for (std::size_t left = count; left > 1 && !text.empty(); --left) {
        const std::size_t end = text.find('\n', text.size() / left);
        if (end == std::string_view::npos)
            break;
        parts.push_back(text.substr(0, end + 1));
        text.remove_prefix(end + 1);
    }
    parts.push_back(text);
    return parts;
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
    return object.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::optional<JournalEntry> ReadJournalLine(std::string_view line)
{
    EntryBuilder builder;
    if (!PlainReader(line).Read(builder))
        builder = ReadTree(line);
    return builder.IsWhole() ? std::optional(std::move(builder.entry)) : std::nullopt;
}

void TakeJournalText(JournalContent& content, std::string_view text, std::size_t following)
{
    if (content.entries.empty())
        content.entries.reserve((1 + following) * (text.size() / ShortEntry + 1));
    std::vector<std::future<JournalContent>> parts;
    // A machine that does not tell its cores says 0: then it is one part.
    for (const std::string_view part : PartsOf(text, std::thread::hardware_concurrency()))
        parts.push_back(std::async(std::launch::async, ReadPart, part));
    for (std::future<JournalContent>& part : parts) {
        JournalContent read = part.get();
        std::ranges::move(read.entries, std::back_inserter(content.entries));
        content.damaged += read.damaged;
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
