// The command "diff": what is different between a setup file and others, or the files of two folders.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/DifferenceOutput.h"
#include "cli/SetupNames.h"
#include "cli/Told.h"
#include "cli/Verdict.h"

namespace kelvora {

namespace {

struct DiffRequest {
    std::string before;
    std::vector<std::string> after;  ///< each is compared with `before`: files and folders, as for the
                                     ///< command "check"; where `before` is a folder, folders
    bool json = false;
    bool quiet = false;  ///< nothing is printed
};

constexpr int Same = 0;
constexpr int Different = 1;
constexpr int Trouble = 2;

// The setup of a file; nothing, and why in `told`, when it is not accepted.
std::optional<SetupDocument> ReadAccepted(const FoundName& name, bool json, Told& told)
{
    std::string text;
    SetupDocument document;
    const Verdict verdict = CheckSetup(name, text, &document);
    if (verdict.outcome == Verdict::Outcome::Accepted)
        return document;
    Told refused = ToldOf(name.path, verdict, json);
    told.out += refused.out;
    told.err += refused.err;
    told.exitCode = Trouble;
    return std::nullopt;
}

Told Compare(const DiffRequest& request, const std::string& beforePath, const SetupDocument& before,
             const FoundName& name)
{
    Told told;
    const auto after = ReadAccepted(name, request.json, told);
    if (!after)
        return told;
    const auto differences = CompareSetups(before, *after);
    told.exitCode = differences.empty() ? Same : Different;
    if (!request.quiet)
        told.out = request.json ? DifferencesJson(beforePath, name.path, differences)
                                : DifferencesText(beforePath, name.path, differences);
    return told;
}

// The files of two folders that have the same name below them; one of them has no path where there is none.
struct Pair {
    FoundName before, after;
};

Told TellLone(const DiffRequest& request, const Pair& pair)
{
    Told told{{}, {}, Different};
    if (request.json)
        told.out = DifferencesJson(pair.before.path, pair.after.path, {});
    else
        told.out =
            pair.before.path.empty() ? pair.after.path + ": added\n" : pair.before.path + ": removed\n";
    if (request.quiet)
        told.out.clear();
    return told;
}

Told ComparePair(const DiffRequest& request, const Pair& pair)
{
    const bool isLone = pair.before.path.empty() || pair.after.path.empty();
    if (isLone && pair.before.failure.empty() && pair.after.failure.empty())
        return TellLone(request, pair);
    Told told;
    std::optional<SetupDocument> before;
    if (!pair.before.path.empty())
        before = ReadAccepted(pair.before, request.json, told);
    if (before)
        return Compare(request, pair.before.path, *before, pair.after);
    if (!pair.after.path.empty())
        ReadAccepted(pair.after, request.json, told);
    return told;
}

using Pairs = std::map<std::string, Pair, std::less<>>;

// Below a folder that could not be read nothing is known to be missing.
void DropUnknown(Pairs& pairs)
{
    std::vector<std::string> unread;
    for (const auto& [below, pair] : pairs)
        if (!pair.before.failure.empty() || !pair.after.failure.empty())
            unread.push_back(below.empty() ? below : below + "/");
    std::erase_if(pairs, [&](const auto& entry) {
        const Pair& pair = entry.second;
        return (pair.before.path.empty() || pair.after.path.empty()) && pair.before.failure.empty() &&
               pair.after.failure.empty() && std::ranges::any_of(unread, [&](const std::string& start) {
                   return entry.first.starts_with(start);
               });
    });
}

std::vector<Pair> PairsOf(const std::string& before, const std::string& after, std::istream& in)
{
    Pairs pairs;
    for (FoundName& name : AllSetups({&before, 1}, in))
        pairs[std::string(name.Below())].before = std::move(name);
    for (FoundName& name : AllSetups({&after, 1}, in))
        pairs[std::string(name.Below())].after = std::move(name);
    DropUnknown(pairs);
    std::vector<Pair> list;
    for (auto& [below, pair] : pairs)
        list.push_back(std::move(pair));
    return list;
}

int NothingToCompare(Console& console)
{
    NothingFound(console);
    return Trouble;
}

int DiffFolders(const DiffRequest& request, Console& console)
{
    std::vector<Pair> pairs;
    for (const std::string& after : request.after) {
        if (!IsFolder(after))
            return Misused(console, "a folder is compared with folders, not with " + after);
        std::ranges::move(PairsOf(request.before, after, console.in), std::back_inserter(pairs));
    }
    if (pairs.empty())
        return NothingToCompare(console);
    return TellInOrder(
        pairs, [&](const Pair& pair) { return ComparePair(request, pair); }, console);
}

int DiffFiles(const DiffRequest& request, Console& console)
{
    Told refused;
    const auto before = ReadAccepted({request.before}, request.json, refused);
    const std::vector<FoundName> names = AllSetups(request.after, console.in);
    if (!before)
        return TellInOrder(std::vector{refused}, std::identity(), console);
    if (names.empty())
        return NothingToCompare(console);
    return TellInOrder(
        names, [&](const FoundName& name) { return Compare(request, request.before, *before, name); },
        console);
}

// Prints the differences of each pair that has some, a line each. Of two folders the files are pairs that
// have the same name below them, and one that stands in one of them only is told. Returns the exit code as
// programs of this name do: 0 all are the same, 1 some differ, 2 a file was rejected or could not be read,
// or there is none. Throws OutputError.
int Diff(const DiffRequest& request, Console& console)
{
    return IsFolder(request.before) ? DiffFolders(request, console) : DiffFiles(request, console);
}

}  // namespace

void AddDiffCommand(CLI::App& app, Console& console, int& exitCode)
{
    const auto request = std::make_shared<DiffRequest>();
    CLI::App* command =
        app.add_subcommand("diff", "Tell what differs between setup files: modules, options, keys");
    command->add_option("A", request->before, "Setup file, or a folder to compare with folders")
        ->type_name("")
        ->required();
    command
        ->add_option("B", request->after, "Setup files, or folders: each file below them is compared with A")
        ->type_name("")
        ->required();
    command->add_flag("--json", request->json, "Print an object a line for every file");
    command->add_flag("-q,--quiet", request->quiet, "Print nothing, the exit code tells");
    command->footer(
        "A line a difference, from A to B; a key that differs is told with both numbers where its module has "
        "moved.\n"
        "Of two folders the files of the same name below them are compared, and what was added or removed is "
        "told.\n"
        "Exit code: 0 all are the same; 1 some differ; 2 a file was rejected or could not be read, or there "
        "is none.");
    command->callback([request, &console, &exitCode] { exitCode = Diff(*request, console); });
}

}  // namespace kelvora
