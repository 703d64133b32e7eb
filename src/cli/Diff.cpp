#include "cli/Diff.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <memory>
#include <nlohmann/json.hpp>

#include "app/SetupTexts.h"
#include "cli/OrderedWork.h"
#include "cli/SetupJson.h"
#include "cli/Verdict.h"
#include "platform/Encoding.h"
#include "setup/SetupDifferences.h"

namespace kelvora {

namespace {

using Json = nlohmann::ordered_json;
using What = SetupDifference::What;

constexpr int Same = 0;
constexpr int Different = 1;
constexpr int Trouble = 2;

constexpr std::array WhatNames{"added",     "removed",  "order",  "unknownModules", "tracks",
                               "separator", "autoRead", "fiscal", "backlight",      "key"};
static_assert(WhatNames.size() == static_cast<std::size_t>(What::Last) + 1);

std::string TextOf(const SetupDifference& difference)
{
    // Without a message file: the results of a command read the same on every machine.
    static const MessageCatalogue English;
    return Utf8FromText(Describe(English, difference));
}

std::string DifferencesText(const std::string& before, const std::string& after,
                            const std::vector<SetupDifference>& differences)
{
    if (differences.empty())
        return {};
    std::string text = "--- " + before + "\n+++ " + after + "\n";
    for (const SetupDifference& difference : differences)
        text += TextOf(difference) + "\n";
    return text;
}

// A side's value: the names of modules, the codes of unknown ones, else the text that a setup holds.
Json ValueObject(What what, const std::string& value)
{
    if (what == What::Added || what == What::Removed)
        return {};
    if (what != What::Order && what != What::UnknownModules)
        return Utf8FromText(value);
    Json list = Json::array();
    for (const char code : value)
        if (what == What::Order)
            list.push_back(KindName(static_cast<ModuleKind>(code)));
        else
            list.push_back(static_cast<unsigned char>(code));
    return list;
}

Json DifferenceObject(const SetupDifference& difference)
{
    const bool isKey = difference.what == What::Key;
    Json object;
    object["what"] = WhatNames.at(static_cast<std::size_t>(difference.what));
    object["module"] = difference.kind == ModuleKind::None ? Json() : Json(KindName(difference.kind));
    object["track"] = difference.what == What::Separator ? Json(difference.position) : Json();
    object["keyBefore"] = isKey ? Json(difference.numberBefore) : Json();
    object["keyAfter"] = isKey ? Json(difference.numberAfter) : Json();
    object["before"] = ValueObject(difference.what, difference.before);
    object["after"] = ValueObject(difference.what, difference.after);
    object["text"] = TextOf(difference);
    return object;
}

std::string DifferencesJson(const std::string& before, const std::string& after,
                            const std::vector<SetupDifference>& differences)
{
    Json object;
    object["before"] = Utf8FromPath(before);
    object["after"] = Utf8FromPath(after);
    object["same"] = differences.empty();
    object["differences"] = Json::array();
    for (const SetupDifference& difference : differences)
        object["differences"].push_back(DifferenceObject(difference));
    return object.dump() + "\n";
}

// What one file comes to.
struct Told {
    std::string out, err;
    int exitCode = Same;
};

// The setup of a file; nothing, and why in `told`, when it is not accepted.
std::optional<SetupDocument> ReadAccepted(const std::string& path, bool json, Told& told)
{
    std::string text;
    SetupDocument document;
    const Verdict verdict = CheckSetupFile(path, text, &document);
    if (verdict.outcome == Verdict::Outcome::Accepted)
        return document;
    told = {json ? VerdictJson(path, verdict) : std::string(), VerdictLine(path, verdict), Trouble};
    return std::nullopt;
}

Told Compare(const DiffRequest& request, const SetupDocument& before, const std::string& path)
{
    Told told;
    const auto after = ReadAccepted(path, request.json, told);
    if (!after)
        return told;
    const auto differences = CompareSetups(before, *after);
    told.exitCode = differences.empty() ? Same : Different;
    if (!request.quiet)
        told.out = request.json ? DifferencesJson(request.before, path, differences)
                                : DifferencesText(request.before, path, differences);
    return told;
}

}  // namespace

int Diff(const DiffRequest& request, Console& console)
{
    int exitCode = Same;
    const auto take = [&](const Told& told) {
        console.err << told.err;
        Emit(console, told.out);
        exitCode = std::max(exitCode, told.exitCode);
    };
    Told refused;
    if (const auto before = ReadAccepted(request.before, request.json, refused))
        RunOrderedOn<Told>(
            request.after, [&](const std::string& path) { return Compare(request, *before, path); }, take);
    else
        take(refused);
    return exitCode;
}

void AddDiffCommand(CLI::App& app, Console& console, int& exitCode)
{
    const auto request = std::make_shared<DiffRequest>();
    CLI::App* command =
        app.add_subcommand("diff", "Tell what differs between setup files: modules, options, keys");
    command->add_option("A", request->before, "Setup file")->type_name("")->required();
    command->add_option("B", request->after, "Setup files, each of which is compared with A")
        ->type_name("")
        ->required();
    command->add_flag("--json", request->json, "Print an object a line for every B");
    command->add_flag("-q,--quiet", request->quiet, "Print nothing, the exit code tells");
    command->footer(
        "A line a difference, from A to B; a key that differs is told with both numbers where its module has "
        "moved.\n"
        "Exit code: 0 all are the same; 1 some differ; 2 a file was rejected or could not be read.");
    command->callback([request, &console, &exitCode] { exitCode = Diff(*request, console); });
}

}  // namespace kelvora
