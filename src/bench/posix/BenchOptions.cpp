#include "bench/posix/BenchOptions.h"

#include <CLI/CLI.hpp>
#include <set>

#include "bench/posix/FaultOptions.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora::bench {

namespace {

constexpr const char* Description =
    "Plays the terminal and the keyboard modules of a till's serial lines behind pseudo-terminals.\n"
    "Prints the number and the device of each line, then plays until it is told to end.";

constexpr const char* Examples =
    "Examples:\n"
    "  kelvora-bench\n"
    "  kelvora-bench --modules km096,km064,iccr --state till07.txt\n"
    "  kelvora-bench --modules mcr12 --speed 2400 --seed 7 --drop 0.001\n"
    "  kelvora-bench --late '$9902#1=1100' --status '0FB3+=9' --log\n"
    "\n"
    "A COMMAND is what a command of the terminal begins with, such as '$9904' or '$9904!3'.\n"
    "With a dot behind it ('0FB3.') it is that command alone, with a plus sign ('0FB3+') that with\n"
    "something behind it, with #2 ('$9902#2') the second of them. Of several that fit the longest\n"
    "decides. Put quotes around it.\n"
    "\n"
    "A line of the file of tills is \"SECONDS LINE gone\" or \"SECONDS LINE till OPTIONS\", where the "
    "options are\n"
    "--modules, --name, --state and faults of that till. The seconds count from the start; those of \"+2\" "
    "from\n"
    "what happened before on that line, those of \"idle+2\" from the last command that it got, $9900 apart.\n"
    "\n"
    "Exit code: 0 ended; 1 a line cannot be played; 2 wrong usage.";

/// Speeds that modules work at.
const std::set<int> ModuleSpeeds{9600, 4800, 2400, 1200};

/// Speeds of the terminal's own settings.
const std::set<int> TerminalSpeeds{19200, 9600, 4800, 2400, 1200, 600, 300, 150};

TillScript ReadTills(const std::string& path)
{
    std::string text;
    try {
        ReadWholeFile(path, text);
        return ParseTillScript(text);
    } catch (const FileError& error) {
        throw CLI::ValidationError("--tills", path + ": " + error.what());
    } catch (const TillScriptError& error) {
        throw CLI::ValidationError("--tills", path + ", " + error.what());
    }
}

void AddLineOptions(CLI::App& app, BenchOptions& options)
{
    app.add_option_function<std::vector<std::string>>(
           "--modules",
           [&options](const std::vector<std::string>& lists) {
               for (const std::string& list : lists)
                   options.lines.push_back(ParseModules(list));
           },
           "What hangs on a line, in its order: km096, km064, mcr12, mcr23, mcr123, iccr, separated by "
           "commas; "
           "or none. Once for each line")
        ->allow_extra_args(false)
        ->type_name("LIST");
    app.add_option("--lines", options.count,
                   "How many lines; what --modules names is repeated on them in its order. As many as those "
                   "unless told")
        ->type_name("N")
        ->check(CLI::Range(std::size_t{1}, MostLines));
    app.add_option_function<std::vector<std::string>>(
           "--name",
           [&options](const std::vector<std::string>& names) {
               for (const std::string& name : names)
                   options.names.push_back(ParseTerminalName(name));
           },
           "What the terminal of a line calls itself. Once for each line")
        ->allow_extra_args(false)
        ->type_name("NAME");
    app.add_option_function<std::string>(
           "--tills", [&options](const std::string& path) { options.tills = ReadTills(path); },
           "File that says which till comes to a line or leaves it, and when; see below")
        ->type_name("FILE");
    app.add_option_function<int>(
           "--speed", [&options](int baud) { options.line.modules = {ModuleLinkAt({.baud = baud})}; },
           "Speed of the modules")
        ->type_name("BAUD")
        ->check(CLI::IsMember(ModuleSpeeds));
    app.add_option("--terminal-speed", options.line.terminal.baud, "Speed of the terminal")
        ->type_name("BAUD")
        ->check(CLI::IsMember(TerminalSpeeds));
    app.add_option(
           "--state", options.statePath,
           "File that keeps flash and EEPROM of the first line; FILE.2 that of the second, and so on. "
           "Where it exists, it says what hangs on the line")
        ->type_name("FILE");
    app.add_flag_callback(
        "--unpaced", [&options] { options.line.isPaced = false; }, "Bytes take no time");
    app.add_flag(
        "--log", options.tells,
        "Print the number of a line and what happens there: held, released (the terminal, by a host), "
        "gone, there (the till)");
    app.add_flag("--until-eof", options.untilEof, "End when standard input ends");
}

}  // namespace

void AddBench(CLI::App& app, BenchOptions& options)
{
    app.name("kelvora-bench");
    app.description(Description);
    app.set_version_flag("--version", "kelvora-bench " KELVORA_VERSION);
    app.footer(Examples);
    AddLineOptions(app, options);
    AddFaultOptions(app, options.line.faults);
    app.callback([&options] { CheckFaults(options.line.faults); });
}

std::optional<BenchOptions> ParseBenchOptions(const std::vector<std::string>& arguments, std::ostream& out,
                                              std::ostream& err, int& exitCode)
{
    BenchOptions options;
    CLI::App app;
    AddBench(app, options);
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::ParseError& error) {
        exitCode = app.exit(error, out, err) == 0 ? Done : WrongUsage;
        return std::nullopt;
    }
    if (options.lines.empty() && options.tills.empty())
        options.lines = {{Module::KM096, Module::KM064, Module::MCR123, Module::ICCR},
                         {Module::KM096, Module::MCR123}};
    if (options.count > 0) {
        const std::size_t named = options.lines.size();
        while (named > 0 && options.lines.size() < options.count)
            options.lines.push_back(options.lines[options.lines.size() - named]);
        options.lines.resize(options.count);
    }
    return options;
}

}  // namespace kelvora::bench
