#include "cli/Cli.h"

#include <CLI/CLI.hpp>
#include <array>
#include <exception>
#include <sstream>
#include <vector>

#include "cli/Commands.h"
#include "cli/Console.h"

namespace kelvora {

namespace {

// Adds a command to the command line; what it then does sets the exit code.
using AddFileCommand = void (*)(CLI::App& app, Console& console, int& exitCode);
using AddLineCommand = void (*)(CLI::App& app, Console& console, LineAccess& access, int& exitCode);

constexpr std::array<AddFileCommand, 8> FileCommands{AddCheckCommand,  AddShowCommand,  AddMakeCommand,
                                                     AddReportCommand, AddDiffCommand,  AddFormatCommand,
                                                     AddImageCommand,  AddRenderCommand};
constexpr std::array<AddLineCommand, 9> LineCommands{AddEditCommand,     AddScanCommand,   AddDownloadCommand,
                                                     AddVerifyCommand,   AddDumpCommand,   AddRestoreCommand,
                                                     AddIdentityCommand, AddSeriesCommand, AddJournalCommand};

constexpr const char* Examples =
    "Examples:\n"
    "  kelvora-cli check exports/\n"
    "  find . -name '*.dat' -print0 | kelvora-cli check --null --json\n"
    "  kelvora-cli show till07.dat\n"
    "  kelvora-cli show --json till07.dat | kelvora-cli make - -o copy.dat\n"
    "  kelvora-cli diff standard.dat till07.dat\n"
    "  kelvora-cli format till07.dat -o till07.dat\n"
    "  kelvora-cli edit exports/ --where fiscal=yes --set fiscal=no --dry-run\n"
    "  kelvora-cli render till07.dat -o till07.pdf\n"
    "  kelvora-cli report exports/ --standard standard.dat -o report.html\n"
    "  kelvora-cli scan --line 1=/dev/ttyUSB0 -o till07.dat\n"
    "  kelvora-cli download --line 1=/dev/ttyUSB0 till07.dat\n"
    "\n"
    "Exit code: 0 done; 1 a file was rejected, could not be read or written, or is not what the device\n"
    "holds or is for; 2 wrong usage; 3 the devices or their line failed, or the work was stopped.";

// The arguments as the parser takes them: from the end, and without names in brackets, which it would take
// for lists.
std::vector<std::string> ParserArguments(std::span<const std::string> arguments)
{
    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    for (std::string& argument : reversed)
        if (argument.starts_with('[') || argument.starts_with('{'))
            argument.insert(0, "./");
    return reversed;
}

int ParseAndRun(std::span<const std::string> arguments, Console& console, LineAccess& access)
{
    int exitCode = ExitCode::Done;
    CLI::App app;
    AddCli(app, console, access, exitCode);
    try {
        app.parse(ParserArguments(arguments));
        return exitCode;
    } catch (const CLI::ParseError& error) {
        const std::string first = arguments.empty() ? std::string() : arguments.front();
        if (!first.empty() && first.front() != '-' &&
            app.get_subcommands([&](const CLI::App* each) { return each->get_name() == first; }).empty()) {
            console.err << DiagnosticLine('"' + first + "\" is no command; --help lists them");
            return ExitCode::Usage;
        }
        std::ostringstream shown;
        const bool done = app.exit(error, shown, console.err) == 0;
        Emit(console, shown.str());
        return done ? ExitCode::Done : ExitCode::Usage;
    }
}

}  // namespace

void AddPath(CLI::App& command, const std::string& names, std::string& path, const std::string& type,
             const std::string& help)
{
    command.add_option(names, path, help)->type_name(type)->check([](const std::string& name) {
        return name.empty() ? "expected the name of a file" : std::string();
    });
}

void AddCli(CLI::App& app, Console& console, LineAccess& access, int& exitCode)
{
    app.name(std::string(CommandName));
    app.description(
        "Checks, shows and rewrites the setup files of a till's keyboard devices, and reads and "
        "writes the devices.");
    app.set_version_flag("--version", std::string(CommandName) + " " KELVORA_VERSION);
    app.require_subcommand(1);
    app.footer(Examples);
    for (const AddFileCommand add : FileCommands)
        add(app, console, exitCode);
    for (const AddLineCommand add : LineCommands)
        add(app, console, access, exitCode);
}

int RunCli(std::span<const std::string> arguments, std::istream& in, std::ostream& out, std::ostream& err,
           LineAccess& access)
{
    Console console{in, out, err};
    try {
        return ParseAndRun(arguments, console, access);
    } catch (const OutputError& error) {
        err << FailureLine("standard output", error.what());
    } catch (const LineAccessError& error) {
        err << DiagnosticLine(error.what());
        return ExitCode::Line;
    } catch (const std::exception& error) {
        err << DiagnosticLine(error.what());
    }
    return ExitCode::Rejected;
}

}  // namespace kelvora
