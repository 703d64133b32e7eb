// What kelvora-cli does beside the windows.
#include <sstream>

#include "cli/Cli.h"
#include "cli/LineAccess.h"
#include "platform/TextFiles.h"
#include "setup/SetupError.h"
#include "setup/SetupReader.h"
#include "simulation/Session.h"

namespace kelvora::simulation {

namespace {

constexpr const char* IdentityFolder = "/sim/data/identities";
constexpr const char* NotReleasedText = "did not confirm that it uses its devices again";

}  // namespace

/// One run of it. Its person is asked on the terminal.
struct Session::CommandLine final : LineAccess {
    CommandLine(Session& given, Rules::Work& givenWork, int givenPort)
        : session(given),
          work(givenWork),
          port(givenPort),
          program(session.world_, [&given](const auto& saving) { given.rules_.NoteSaving(saving); })
    {
    }

    Comms& Prepare(const LineOptions& /*options*/) override
    {
        session.WaitIn(work, program.program.operation);
        return program.program.lines.Terminals();
    }
    bool StopRequested() override { return StopCount() > 0; }
    // Nobody waits for a till that does not come.
    int StopCount() override
    {
        constexpr std::size_t Patience = 3000;
        return program.program.operation.IsStopAsked() || session.world_.IsDead() ||
                       session.world_.waits > Patience
                   ? 2
                   : 0;
    }
    bool ShowsProgress() const override { return false; }
    bool CanAsk() const override { return true; }
    bool Ask(const std::string& /*question*/) override
    {
        work.isAllowed = session.world_.Moment() && !session.world_.random.Once(6);
        return work.isAllowed;
    }
    SerialPort& Port(int line) override { return line == 1 ? program.port1 : program.port2; }
    std::string DataFolder() const override { return simulation::DataFolder; }
    const Journal* OperationJournal() const override { return &program.journal; }

    int Run(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.end(), {"--port", std::to_string(port)});
        std::istringstream in;
        std::ostringstream out;
        std::ostringstream err;
        program.program.operation.Take({});
        const int code = RunCli(arguments, in, out, err, *this);
        program.program.operation.GiveBack();
        session.WaitNoMore();
        said = out.str() + err.str();
        return code;
    }

    Session& session;
    Rules::Work& work;
    int port;
    Copy program;
    std::string said;
};

// Runs a command that writes the file named last.
void Session::WriteFile(CommandLine& command, const std::vector<std::string>& arguments)
{
    const std::string& path = arguments.back();
    const auto before = world_.disk.Content(path);
    const bool isTold = command.Run(arguments) == 0 && world_.Moment();
    if (isTold && before && before != world_.disk.Content(path))
        Require(world_.disk.Content(BackupName(path)) == before, Rule::Kept,
                path + " was replaced and is not in its backup");
    rules_.NoteWritten(BackupName(path), false);
    rules_.NoteWritten(path, isTold);
}

void Session::Command()
{
    const int port = static_cast<int>(world_.random.Below(2)) + 1;
    Rules::Work work = BeginWork(port);
    CommandLine command(*this, work, port);
    const std::string path = copy_->person.Path(".dat");
    const auto text = world_.disk.Content(path);
    std::optional<SetupDocument> document;
    if (text && IsWholeFile(*text))
        document = ReadSetup(*text);
    switch (world_.random.Below(4)) {
        case 0: {
            if (document)
                work.wanted = *document;
            if (command.Run({"download", path}) == 0 && world_.Moment())
                Require(document && work.till.Flash() == Rules::Wanted(*document, work.before), Rule::Truth,
                        "the device does not hold the setup: " + command.said);
            break;
        }
        case 1: {
            if (command.Run({"verify", path}) == 0 && world_.Moment())
                Require(document &&
                            FirstDifference(Rules::Wanted(*document, work.before), work.before, false) == 0,
                        Rule::Truth, "the device does not hold the setup");
            break;
        }
        case 2:
            WriteFile(command, {"scan", "-o", path});
            break;
        default:
            WriteFile(command, {"dump", "-o", copy_->person.Path(".mem")});
    }
    if (world_.Moment())
        rules_.JudgeEnd(work, command.said.find(NotReleasedText) != std::string::npos);
}

void Session::WriteIdentity()
{
    const int port = static_cast<int>(world_.random.Below(2)) + 1;
    Rules::Work work = BeginWork(port);
    CommandLine command(*this, work, port);
    const auto before = work.till.line.Memory().modules;
    const std::size_t address = world_.random.Below(5);
    constexpr std::array Names{"MCR 2+3", "KM64", "LCD"};
    const std::string name = world_.random.Of(Names);
    const std::size_t copies = world_.disk.List(IdentityFolder).size();
    work.till.line.onStored = [&] {
        Require(work.isAllowed, Rule::Flash, "an identity was written before the user had said so");
        const auto names = world_.disk.List(IdentityFolder);
        Require(names.size() > copies, Rule::Backup, "what the modules held was not kept");
        Require(world_.disk.Certain(IdentityFolder + ("/" + names.back())).has_value(), Rule::Backup,
                "what the modules held is not safe");
    };
    const int code = command.Run({"identity", "write", std::to_string(address), name});
    work.till.line.onStored = nullptr;
    const auto& now = work.till.line.Memory().modules;
    if (!world_.Moment() || now == before)
        return;
    for (std::size_t at = 0; at < now.size() && work.till.isClean; ++at)
        Require(at == address || now[at] == before[at], Rule::Flash, "another module was written");
    Require(code != 0 || now.at(address) != before.at(address), Rule::Truth, "the module was not written");
}

void Session::Series()
{
    const int port = static_cast<int>(world_.random.Below(2)) + 1;
    Rules::Work work = BeginWork(port);
    CommandLine command(*this, work, port);
    const std::string path = copy_->person.Path(".dat");
    const auto text = world_.disk.Content(path);
    std::optional<SetupDocument> document;
    if (text && IsWholeFile(*text)) {
        document = ReadSetup(*text);
        work.wanted = *document;
    }
    const int code = command.Run({"series", path, "--count", "1"});
    if (!world_.Moment())
        return;
    if (code == 0 && command.said.find(" 0 done, 0 held") == std::string::npos)
        Require(document && work.till.Flash() == Rules::Wanted(*document, work.before), Rule::Truth,
                "the device does not hold the setup: " + command.said);
    rules_.JudgeEnd(work, command.said.find(NotReleasedText) != std::string::npos);
}

}  // namespace kelvora::simulation
