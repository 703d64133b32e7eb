// What kelvora-cli does beside the windows.
#include <algorithm>
#include <sstream>

#include "cli/Cli.h"
#include "platform/TextFiles.h"
#include "setup/SetupEdit.h"
#include "setup/SetupReader.h"
#include "setup/SetupWriter.h"
#include "simulation/CommandLine.h"

namespace kelvora::simulation {

int Session::CommandLine::Run(const std::vector<std::string>& arguments)
{
    std::istringstream in;
    std::ostringstream err;
    program.program.operation.Take({});
    const int code = RunCli(arguments, in, out, err, *this);
    program.program.operation.GiveBack();
    said = out.str() + err.str();
    return code;
}

int Session::CommandLine::RunOnLine(std::vector<std::string> arguments)
{
    arguments.insert(arguments.end(), {"--port", std::to_string(port)});
    const DiskFaults& faults = session.world_.disk.faults;
    const bool isSound = faults.AreNone();
    const int code = Run(arguments);
    session.WaitNoMore();
    if (session.world_.Moment() && isSound && faults.AreNone() && work.isHolding)
        session.rules_.NoteJournalled();
    return code;
}

void Session::CommandLine::JudgeLine() const
{
    if (session.world_.Moment())
        session.rules_.JudgeEnd(
            work, said.find("did not confirm that it uses its devices again") != std::string::npos);
}

// Nothing where no setup is.
std::optional<SetupDocument> Session::SetupIn(const std::string& path) const
{
    const auto text = world_.disk.Content(path);
    return text ? TryReadSetup(*text) : std::nullopt;
}

// Runs a command that writes the file named last; whether it has.
bool Session::WriteFile(CommandLine& command, const std::vector<std::string>& arguments)
{
    const std::string& path = arguments.back();
    const auto before = world_.disk.Content(path);
    const bool isTold = command.RunOnLine(arguments) == 0 && world_.Moment();
    if (isTold && !rules_.IsTouched(path))
        rules_.JudgeReplaced(path, before);
    rules_.NoteWritten(BackupName(path), false);
    rules_.NoteWritten(path, isTold);
    return isTold;
}

void Session::Command()
{
    CommandLine command(*this);
    Rules::Work& work = command.work;
    const std::string path = copy_->person.Path(".dat");
    const auto document = SetupIn(path);
    const auto run = [&](std::vector<std::string> arguments) {
        return command.RunOnLine(std::move(arguments)) == 0 && world_.Moment();
    };
    const auto requireWanted = [&] {
        Require(work.wanted && work.till.Flash() == Rules::Wanted(*work.wanted, work.before), Rule::Truth,
                "the device does not hold what it was to: " + command.said);
    };
    switch (world_.random.Below(6)) {
        case 0:
        case 1:
            if (document)
                work.wanted = *document;
            if (run({"download", path}))
                requireWanted();
            break;
        case 2: {
            const std::string dump = copy_->person.Dump();
            if (const auto text = world_.disk.Content(dump))
                if (auto content = DumpOf(*text))
                    work.wanted = *std::move(content);
            if (run({"restore", dump}))
                requireWanted();
            break;
        }
        case 3:
            if (run({"verify", path}))
                Require(document &&
                            FirstDifference(Rules::Wanted(*document, work.before), work.before, false) == 0,
                        Rule::Truth, "the device does not hold the setup");
            break;
        case 4:
            if (WriteFile(command, {"scan", "-o", path}) && command.said.empty())
                Rules::JudgeScan(SetupIn(path).value(), work.till.Flash());
            break;
        default:
            if (WriteFile(command, {"dump", "-o", copy_->person.Path(".mem")}))
                rules_.JudgeDump(work.till.Flash());
    }
    command.JudgeLine();
}

// All setups of the shop alike.
void Session::EditFiles()
{
    constexpr std::array Settings{"fiscal=yes",      "fiscal=no",           "mcr.autoread=yes",
                                  "mcr.tracks=2,3",  "mcr.separator2=^",    "KM096.7=double-vertical",
                                  "KM096.43=unused", "KM064.97..104=single"};
    struct File {
        std::string before;
        std::optional<std::string> wanted;
        bool isCertain;  ///< whatever becomes of the power
        bool isAlready;  ///< the setup is as wanted, whatever the text
    };
    const std::string setting = world_.random.Of(Settings);
    std::map<std::string, File> files;
    // Below a folder it would look for them by the library, which asks the system itself.
    std::vector<std::string> arguments{"edit", "--set", setting};
    for (const auto& [path, text] : world_.disk.Contents())
        if (path.ends_with(".dat")) {
            auto document = SetupIn(path);
            const SetupDocument old = document.value_or(SetupDocument());
            const bool isLegal = document && ApplyEdit(*document, {{}, {ParseSetting(setting)}}).empty();
            files[path] = {text,
                           isLegal ? std::optional(WriteSetup(document->Modules) + "\r\n") : std::nullopt,
                           world_.disk.Certain(path) == text,
                           isLegal && WriteSetup(document->Modules) == WriteSetup(old.Modules)};
            arguments.push_back(path);
        }
    CommandLine command(*this);
    const bool isDone = !files.empty() && command.Run(arguments) == 0;
    for (const auto& [path, file] : files) {
        const auto now = world_.disk.Content(path);
        const bool isChanged = now != file.before;
        if (file.isCertain || !world_.WasPowerCut()) {
            Require(!isChanged || now == file.wanted, Rule::Whole,
                    path + " is neither as it was nor as wanted");
            rules_.JudgeReplaced(path, file.before);
        }
        Require(!isDone || !world_.Moment() || now == file.wanted || (!isChanged && file.isAlready),
                Rule::Truth, path + " is not edited: " + command.said);
        rules_.NoteWritten(BackupName(path), false);
        rules_.NoteWritten(path, isDone && isChanged && world_.Moment());
        if (isDone && isChanged)
            ++done_["edit"];
    }
}

void Session::ShowJournal()
{
    CommandLine command(*this);
    const int code = command.Run({"journal", "--json"});
    const auto shown = static_cast<std::size_t>(std::ranges::count(command.said, '\n'));
    Require(!world_.Moment() || (code == 0 && shown >= rules_.Journalled()), Rule::Kept,
            "not all of the journal is shown");
}

}  // namespace kelvora::simulation
