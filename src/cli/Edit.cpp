// The command "edit": settings and keys changed in many setup files alike.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <atomic>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <thread>
#include <unordered_set>
#include <utility>
#include <vector>

#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/DifferenceOutput.h"
#include "cli/LineAccess.h"
#include "cli/LineReport.h"
#include "cli/OrderedWork.h"
#include "cli/SetupJson.h"
#include "cli/SetupOutput.h"
#include "flash/OwnBackup.h"
#include "keymap/Models.h"
#include "platform/AsciiCase.h"
#include "platform/Encoding.h"
#include "platform/TextFiles.h"
#include "platform/posix/FileBatch.h"
#include "setup/SetupEdit.h"
#include "setup/SetupWriter.h"

namespace kelvora {

namespace {

struct EditRequest {
    std::vector<std::string> names;  ///< files and folders, as for the command "check"
    std::vector<std::string> set;    ///< as ParseSetting takes them, in UTF-8
    std::vector<std::pair<std::string, std::string>> keysFrom;  ///< a setup file, and the module in it
    std::vector<std::string> where;  ///< as ParseCondition takes them; all are to hold
    bool dryRun = false;             ///< nothing is written, and nothing asked
    bool yes = false;                ///< nothing is asked
    bool json = false;               ///< with one of these two
};

// What is to be done with each setup.
struct Task {
    SetupEdit edit;
    std::vector<SetupCondition> where;
    bool writes = false;
    bool json = false;
};

// A file, with what it held when its differences were shown.
struct EditedFile {
    FoundName name;
    std::optional<std::size_t> shown;
};

struct Outcome {
    enum class What { Changed, AsWanted, NotChosen, Refused, Stopped, Last = Stopped };

    What what = What::Changed;
    const EditedFile* file = nullptr;
    Verdict verdict{};
    std::vector<SetupDifference> differences{};
    std::size_t content = 0;
};

struct OutcomeName {
    std::string_view told, json;
};

// In the order of Outcome::What.
constexpr std::array EditOutcomes{OutcomeName{"changed", "changed"},
                                  OutcomeName{"as wanted already", "asWanted"},
                                  OutcomeName{"not chosen", "notChosen"}, OutcomeName{"refused", "refused"},
                                  OutcomeName{"not reached", "notReached"}};
static_assert(EditOutcomes.size() == static_cast<std::size_t>(Outcome::What::Last) + 1);

const OutcomeName& NameOf(Outcome::What what)
{
    return EditOutcomes.at(static_cast<std::size_t>(what));
}

Outcome Refused(const EditedFile& file, Verdict verdict)
{
    return {Outcome::What::Refused, &file, std::move(verdict)};
}

// One file; what is to be written of it goes to `files`.
Outcome EditFile(const EditedFile& file, const Task& task, Files& files)
{
    std::string text;
    SetupDocument document;
    if (Verdict verdict = CheckSetup(file.name, text, &document);
        verdict.outcome != Verdict::Outcome::Accepted)
        return Refused(file, std::move(verdict));
    const std::size_t content = std::hash<std::string>()(text);
    if (file.shown && *file.shown != content)
        return Refused(file, Unusable("it has changed since its differences were shown"));
    if (!HoldAll(document, task.where))
        return {Outcome::What::NotChosen, &file};
    SetupDocument edited = document;
    if (std::string why = ApplyEdit(edited, task.edit); !why.empty())
        return Refused(file, Unusable(std::move(why)));
    std::vector<SetupDifference> differences = CompareSetups(document, edited);
    if (differences.empty())
        return {Outcome::What::AsWanted, &file};
    try {
        RequireOwnBackup(files, file.name.path);
        if (task.writes)
            SaveTextFile(files, file.name.path, WriteSetup(edited.Modules));
    } catch (const FileError& error) {
        return Refused(file, NotWritten(file.name.path, error));
    }
    return {Outcome::What::Changed, &file, {}, std::move(differences), content};
}

void EditTogether(std::span<const EditedFile> group, const Task& task, std::vector<Outcome>& outcomes)
{
    FileBatch files;
    for (const EditedFile& file : group)
        outcomes.push_back(EditFile(file, task, files));
    for (const FileBatch::Failure& failure : files.Commit())
        for (Outcome& outcome : outcomes)
            if (outcome.file->name.path == failure.path)
                outcome = Refused(*outcome.file, NotWritten(failure.path, failure.error));
}

std::string OutcomeJson(const Outcome& outcome, const Task& task)
{
    nlohmann::ordered_json object = VerdictObject(outcome.file->name.path, outcome.verdict);
    object["outcome"] = NameOf(outcome.what).json;
    object["written"] = outcome.what == Outcome::What::Changed && task.writes;
    object["differences"] = DifferenceObjects(outcome.differences);
    return object.dump() + "\n";
}

using OutcomeCounts = std::map<Outcome::What, std::size_t>;

std::string SummaryLine(const OutcomeCounts& counts, const Task& task)
{
    std::size_t files = 0;
    std::string text;
    for (const auto& [what, count] : counts) {
        files += count;
        text += text.empty() ? ": " : ", ";
        text += std::to_string(count) + " ";
        if (what == Outcome::What::Changed && !task.writes)
            text += "to be ";
        text += NameOf(what).told;
    }
    return DiagnosticLine(std::to_string(files) + (files == 1 ? " file" : " files") + text);
}

// Edits all of them on all cores and tells what came of each, in their order; `showDifferences` where they
// have not been shown. Gives those that change to `changed`.
OutcomeCounts EditAll(const std::vector<EditedFile>& all, const Task& task, bool showDifferences,
                      Console& console, LineAccess& access, std::vector<EditedFile>& changed)
{
    OutcomeCounts counts;
    std::atomic<bool> isStopped = false;
    RunOrderedTogether<Outcome>(
        all, FileBatch::Room(std::max(1U, std::thread::hardware_concurrency())),
        [&](std::span<const EditedFile> group, std::vector<Outcome>& outcomes) {
            if (!isStopped)
                return EditTogether(group, task, outcomes);
            for (const EditedFile& file : group)
                outcomes.push_back({Outcome::What::Stopped, &file});
        },
        [&](const Outcome& outcome) {
            isStopped = isStopped || access.StopRequested();
            ++counts[outcome.what];
            const std::string& path = outcome.file->name.path;
            console.err << VerdictLine(path, outcome.verdict);
            if (outcome.what == Outcome::What::Changed)
                changed.push_back({outcome.file->name, outcome.content});
            if (task.json)
                Emit(console, OutcomeJson(outcome, task));
            else if (showDifferences && !outcome.differences.empty())
                Emit(console, DifferencesText(path, path, outcome.differences));
        });
    return counts;
}

int ExitCodeOf(const OutcomeCounts& counts)
{
    if (counts.contains(Outcome::What::Stopped))
        return ExitCode::Line;
    return counts.contains(Outcome::What::Refused) ? ExitCode::Rejected : ExitCode::Done;
}

std::string Question(std::size_t changed)
{
    return "Change " + std::to_string(changed) + (changed == 1 ? " setup" : " setups") +
           "? The old content of each is kept as \".bak\".";
}

int EditAsked(const std::vector<EditedFile>& all, Task task, Console& console, LineAccess& access)
{
    std::vector<EditedFile> shown;
    OutcomeCounts counts = EditAll(all, task, true, console, access, shown);
    console.err << SummaryLine(counts, task);
    if (shown.empty())
        return ExitCodeOf(counts);
    if (!access.Ask(Question(shown.size()))) {
        console.err << DiagnosticLine("nothing was changed");
        return access.StopRequested() ? ExitCode::Line : ExitCode::Rejected;
    }
    task.writes = true;
    std::vector<EditedFile> changed;
    counts.erase(Outcome::What::Changed);
    for (const auto& [what, count] : EditAll(shown, task, false, console, access, changed))
        counts[what] += count;
    console.err << SummaryLine(counts, task);
    return ExitCodeOf(counts);
}

std::string TextOf(const std::string& argument)
{
    if (const auto text = TextFromUtf8(argument))
        return *text;
    throw std::invalid_argument("\"" + TextFromPath(argument) +
                                "\": has a character that a setup cannot hold");
}

ModuleKind KindNamed(std::string name)
{
    std::ranges::transform(name, name.begin(), AsciiUpper);
    return KindOfSection(name);
}

// Throws std::invalid_argument for what is no setting, condition or module.
Task TaskOf(const EditRequest& request)
{
    Task task;
    task.json = request.json;
    task.writes = request.yes && !request.dryRun;
    for (const std::string& text : request.set)
        task.edit.settings.push_back(ParseSetting(TextOf(text)));
    for (const std::string& text : request.where)
        task.where.push_back(ParseCondition(TextOf(text)));
    for (const auto& [file, module] : request.keysFrom)
        if (!FindModel(KindNamed(module)))
            throw std::invalid_argument("\"" + TextFromPath(module) + "\": expected KM096, KM064 or ICCR");
    return task;
}

// Reads the key maps that are to be taken. False, and told, when a file has none.
bool TakeKeys(const EditRequest& request, SetupEdit& edit, Console& console)
{
    for (const auto& [file, module] : request.keysFrom) {
        Refusal why;
        const auto setup = AcceptedSetup(file, why);
        const auto index = setup ? FindModule(setup->Modules, KindNamed(module)) : std::nullopt;
        if (index)
            edit.keys.push_back(setup->Modules[*index]);
        else
            console.err << (setup ? FailureLine(file, "the setup has no " + module) : why.line);
        if (!index)
            return false;
    }
    return true;
}

bool IsModule(const std::string& name)
{
    return FindModel(KindNamed(name)) != nullptr;
}

bool IsSetting(const std::string& name)
{
    try {
        ParseSetting(name);
        return true;
    } catch (const std::invalid_argument&) {
        return false;
    }
}

// Those that are named, each once.
std::vector<EditedFile> FilesOf(const EditRequest& request, Console& console)
{
    std::vector<EditedFile> all;
    std::unordered_set<std::string> seen;
    OutputPlaces places(OutputPlaces::Backup::AsSaved);
    for (const FoundName& name : AllSetups(request.names, console.in))
        if (seen.insert(std::filesystem::absolute(name.path).lexically_normal().string()).second)
            all.push_back({places.Take(name, name.path).name, std::nullopt});
    return all;
}

std::string CheckUsage(const EditRequest& request)
{
    if (request.set.empty() && request.keysFrom.empty())
        return "nothing is to be changed: expected --set or --keys-from";
    if (request.yes && request.dryRun)
        return "either --yes or --dry-run";
    if (request.json && !request.yes && !request.dryRun)
        return "--json needs --yes or --dry-run";
    // A second value behind an option is taken for a file: nothing is to be written of half a wish.
    for (const std::string& name : request.names)
        if ((IsSetting(name) || IsModule(name)) && !std::filesystem::exists(name))
            return "\"" + Utf8FromPath(name) +
                   "\" is no file: each value needs its own --set or --keys-from FILE";
    return {};
}

// Prints what changes in each setup, asks once for all (on `access`), and saves those that change. One in
// which a change is not legal is told and left whole, and so is one that has changed since it was shown.
// Returns the exit code. Throws OutputError.
int Edit(const EditRequest& request, Console& console, LineAccess& access)
{
    if (const std::string wrong = CheckUsage(request); !wrong.empty())
        return Misused(console, wrong);
    Task task;
    try {
        task = TaskOf(request);
    } catch (const std::invalid_argument& error) {
        return Misused(console, Utf8FromText(error.what()));
    }
    const bool asks = !request.yes && !request.dryRun;
    if (asks && !access.CanAsk())
        return RefuseUnasked(console);
    if (!TakeKeys(request, task.edit, console))
        return ExitCode::Rejected;
    const std::vector<EditedFile> all = FilesOf(request, console);
    if (all.empty())
        return NothingFound(console);
    if (asks)
        return EditAsked(all, std::move(task), console, access);
    std::vector<EditedFile> changed;
    const OutcomeCounts counts = EditAll(all, task, true, console, access, changed);
    console.err << SummaryLine(counts, task);
    return ExitCodeOf(counts);
}

}  // namespace

void AddEditCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode)
{
    const auto request = std::make_shared<EditRequest>();
    CLI::App* command = app.add_subcommand("edit", "Change settings and keys in many setup files alike");
    command->add_option("FILE", request->names, SetupNamesText)->type_name("")->required();
    command
        ->add_option(
            "--set", request->set,
            "A setting and its value: fiscal, backlight, mcr.autoread (yes or no, on or off); mcr.tracks "
            "(1,2 or "
            "2,3 or 1,2,3); mcr.separator1 to 3 (a character, or none); keys by number, such as KM096.43 "
            "or KM064.97..104 (single, double-vertical, double-horizontal, quadruple, unused)")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    command
        ->add_option(
            "--keys-from", request->keysFrom,
            "All keys of a module (KM096, KM064 or ICCR) as they are in that setup file, taken first")
        ->type_name("FILE MODULE")
        ->allow_extra_args(false);
    command
        ->add_option(
            "--where", request->where,
            "Only setups that have that module, such as mcr, or that setting, such as fiscal=yes; with "
            "! in front those that have not. All that are given must hold")
        ->type_name("CONDITION")
        ->allow_extra_args(false);
    command->add_flag("-n,--dry-run", request->dryRun, "Show what would change, and write nothing");
    command->add_flag("-y,--yes", request->yes, "Write without asking");
    command->add_flag("--json", request->json,
                      "Print an object a line for every file; with --yes or --dry-run");
    command->footer(
        "What changes is shown as by diff, and asked about once for all. The old content of a file is kept "
        "as\n"
        "\".bak\". A file in which a change is not legal is left whole and told, with the key and the rule.");
    command->callback(
        [request, &console, &access, &exitCode] { exitCode = Edit(*request, console, access); });
}

}  // namespace kelvora
