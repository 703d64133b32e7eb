#include "report/ResultFile.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "journal/JournalText.h"
#include "platform/JsonText.h"
#include "platform/LocalTime.h"

namespace kelvora {

namespace {

using Json = nlohmann::ordered_json;

std::string TextOf(const Json& object, const char* name)
{
    const auto found = object.find(name);
    return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

std::string OutcomeOf(const Json& exit, const Json& result)
{
    if (!exit.is_number_integer())
        return "not known: not reached, or the connection was lost";
    if (exit != 0)
        return TextOf(result, "outcome") == "different" ? "different" : "failed";
    return TextOf(result, "device") == "same" ? "same" : "done";
}

// What the command says, or else the first thing that it, or the run, complained about.
std::string MessageOf(const Json& object, const Json& result)
{
    if (std::string message = TextOf(result, "message"); !message.empty())
        return message;
    const Json diagnostics = object.value("diagnostics", Json());
    const bool complains = diagnostics.is_array() && !diagnostics.empty() && diagnostics.front().is_string();
    return complains ? diagnostics.front().get<std::string>() : std::string();
}

TillResult FleetResult(const Json& object, std::chrono::sys_seconds changed)
{
    const Json found = object.value("result", Json());
    const Json result = found.is_object() ? found : Json::object();
    const std::string outcome = OutcomeOf(object.value("exit", Json()), result);
    return {TextOf(object, "till"),
            TextOf(object, "action"),
            outcome,
            MessageOf(object, result),
            MomentOf(TextOf(object, "time")).value_or(changed),
            outcome != "done" && outcome != "same",
            TextOf(object, "setup")};
}

bool ChangesOrJudges(const JournalEntry& entry)
{
    constexpr std::array Operations{JournalOperation::Download, JournalOperation::Verify,
                                    JournalOperation::Restore};
    return std::ranges::any_of(Operations, [&](const char* each) { return entry.operation == each; });
}

// A till whose terminal gave no name is known by its file's.
TillResult ResultOf(const JournalEntry& entry, std::chrono::sys_seconds changed)
{
    return {entry.terminal.empty() ? std::filesystem::path(entry.file).stem().string() : entry.terminal,
            entry.operation,
            ResultName(entry.result),
            entry.message,
            MomentOf(entry.time).value_or(changed),
            entry.IsFailure()};
}

// What a list holds, as lines of a journal.
std::string LinesOf(const Json& list)
{
    std::string lines;
    for (const Json& each : list)
        lines += JsonText(each) + '\n';
    return lines;
}

}  // namespace

std::optional<std::vector<TillResult>> ReadResults(std::string_view text, std::chrono::sys_seconds changed)
{
    // Deeper than any result, and no danger to the stack, which copies and texts of it use a piece of a
    // level.
    constexpr int MostLevels = 32;
    const auto isTaken = [](int level, Json::parse_event_t, const Json&) { return level < MostLevels; };
    const Json whole = Json::parse(text, isTaken, false);
    if (whole.is_object() && !TextOf(whole, "till").empty() && whole.contains("exit"))
        return std::vector{FleetResult(whole, changed)};
    JournalContent content;
    TakeJournalText(content, whole.is_array() ? LinesOf(whole) : std::string(text));
    if (content.entries.empty() && !(whole.is_array() && whole.empty()))
        return std::nullopt;
    std::vector<TillResult> results;
    for (const JournalEntry& entry : content.entries)
        if (ChangesOrJudges(entry))
            results.push_back(ResultOf(entry, changed));
    return results;
}

}  // namespace kelvora
