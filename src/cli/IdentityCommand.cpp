// The options of the command "identity", which cli/Identity.h carries out.
#include <CLI/CLI.hpp>
#include <memory>

#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/Identity.h"
#include "cli/LineAccess.h"
#include "cli/LineReport.h"
#include "cli/LineRun.h"
#include "eeprom/IdentityCopy.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora {

namespace {

struct IdentityArguments {
    LineOptions line;
    IdentityRequest request;
    bool yes = false;
};

const char* OperationOf(IdentityRequest::Action action)
{
    switch (action) {
        case IdentityRequest::Action::Write:
            return JournalOperation::WriteIdentities;
        case IdentityRequest::Action::Restore:
            return JournalOperation::RestoreIdentities;
        case IdentityRequest::Action::Read:
            break;
    }
    return JournalOperation::ReadIdentities;
}

int Run(IdentityArguments& arguments, Console& console, LineAccess& access)
{
    IdentityRequest& request = arguments.request;
    if (request.action != IdentityRequest::Action::Read && !arguments.yes && !access.CanAsk())
        return RefuseUnasked(console);
    Comms& comms = access.Prepare(arguments.line);
    PosixFiles files;
    request.port = arguments.line.port;
    request.json = arguments.line.json;
    request.folder = IdentityFolder(access.DataFolder());
    IdentityLine line{access.Port(arguments.line.port), comms.Loop(), files,
                      [&] { return access.StopRequested(); }};
    if (!arguments.yes)
        line.ask = [&](const std::string& question) { return access.Ask(question); };
    OperationNote note = BeginNote(OperationOf(request.action), arguments.line, access);
    if (request.action == IdentityRequest::Action::Restore)
        note.OfFile(request.file, ContentOf(request.file));
    line.note = &note;
    return Identity(request, line, console);
}

// One of the three actions, with the options of every command on a line.
void AddAction(CLI::App& command, const char* name, const char* help, IdentityRequest::Action action,
               Console& console, LineAccess& access, int& exitCode)
{
    CLI::App* added = command.add_subcommand(name, help);
    auto arguments = std::make_shared<IdentityArguments>();
    arguments->request.action = action;
    if (action == IdentityRequest::Action::Write) {
        added->add_option("ADDRESS", arguments->request.address, "Address of the module, 0 to 5")
            ->type_name("")
            ->required();
        added->add_option("NAME", arguments->request.name, "Identity, one of " + NamesThatCanBeWritten())
            ->type_name("")
            ->required();
    } else if (action == IdentityRequest::Action::Restore) {
        added->add_option("FILE", arguments->request.file, "Saved copy of identity blocks")
            ->type_name("")
            ->required();
    }
    AddLineOptions(*added, arguments->line);
    added->get_option("--settings")->description("Changes nothing here: the modules' speed is searched for");
    added->get_option("--timeout")
        ->description("Changes nothing here: a module's answer has a time of its own");
    added->get_option("--json")->description("Print each module as an object on a line of its own");
    if (action != IdentityRequest::Action::Read)
        added->add_flag("-y,--yes", arguments->yes, "Write without asking");
    added->callback(
        [arguments, &console, &access, &exitCode] { exitCode = Run(*arguments, console, access); });
}

}  // namespace

void AddIdentityCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode)
{
    using Action = IdentityRequest::Action;
    CLI::App* command =
        app.add_subcommand("identity", "Read and write the identity blocks of the modules on a line");
    command->require_subcommand(1);
    command->footer(
        "The modules must be cabled to the port directly, without a terminal. What is overwritten is saved "
        "first.");
    AddAction(*command, "read", "Print each module's identity", Action::Read, console, access, exitCode);
    AddAction(*command, "write", "Give one module another identity", Action::Write, console, access,
              exitCode);
    AddAction(*command, "restore", "Write a saved copy back", Action::Restore, console, access, exitCode);
}

}  // namespace kelvora
