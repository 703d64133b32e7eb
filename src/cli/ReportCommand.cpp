// The command "report": one page on many tills, for people who look rather than read.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/ReportSources.h"
#include "cli/SetupNames.h"
#include "cli/SetupOutput.h"
#include "cli/Verdict.h"
#include "platform/Encoding.h"
#include "platform/Joined.h"
#include "report/ReportPage.h"

namespace kelvora {

namespace {

struct ReportRequest {
    std::vector<std::string> names;  ///< files and folders, as for the command "check"
    std::string standard{};          ///< the setup that the others are compared with; empty for none
    std::string results{};           ///< the folder of the results; empty for none
    std::string output{};            ///< standard output when empty
    bool json = false;
    std::chrono::sys_seconds now{};
};

constexpr const char* PageEnding = ".html";

std::string CheckPageName(const std::string& name)
{
    return name.size() > std::string_view(PageEnding).size() && name.ends_with(PageEnding)
               ? std::string()
               : std::string("expected a name that ends in ") + PageEnding + ": " + name;
}

// What was named, or how many files that are where that is too much to read or says nothing.
std::string NamesText(const std::vector<std::string>& names, std::size_t files)
{
    constexpr std::size_t MostNames = 2;
    if (names.size() > MostNames || std::ranges::count(names, StandardInputName) != 0)
        return std::to_string(files) + (files == 1 ? " file" : " files");
    return Utf8FromPath(Joined(names, ", "));
}

void Tell(const ReportRequest& request, const ReportCounts& counts, Console& console)
{
    if (request.json)
        Emit(console, nlohmann::ordered_json{{"output", Utf8FromPath(request.output)},
                                             {"tills", counts.tills},
                                             {"deviating", counts.deviating},
                                             {"failed", counts.failed},
                                             {"unread", counts.unread}}
                              .dump() +
                          "\n");
    else
        console.err << DiagnosticLine(CountsText(counts, !request.standard.empty()));
}

int WriteReport(const ReportRequest& request, const std::optional<SetupDocument>& standard, Console& console)
{
    const std::vector<FoundName> names = AllSetups(request.names, console.in);
    if (names.empty())
        return NothingFound(console);
    FleetReport report;
    int exitCode = AddTills(report, names, standard ? &*standard : nullptr, console);
    if (!request.results.empty())
        exitCode = std::max(exitCode, AddResultsBelow(report, request.results, console));
    const std::string page = ReportPage(
        report, {NamesText(request.names, names.size()), Utf8FromPath(request.standard), request.now});
    if (request.output.empty())
        Emit(console, page);
    else
        ReplaceFile(request.output, page);
    Tell(request, report.Counts(), console);
    return exitCode;
}

// Writes the page; what is replaced is kept under its name and ".bak". Files that are not accepted give a
// diagnostic and a row with the reason; without the standard, or the folder of the results, there is no
// page. Returns the exit code. Throws OutputError.
int MakeReport(const ReportRequest& request, Console& console)
{
    if (request.json && request.output.empty())
        return Misused(console, "--json needs --output");
    std::optional<SetupDocument> standard;
    if (!request.standard.empty()) {
        Refusal why;
        standard = AcceptedSetup(request.standard, why);
        if (!standard) {
            console.err << why.line;
            return ExitCode::Rejected;
        }
    }
    try {
        return WriteReport(request, standard, console);
    } catch (const FileError& error) {
        console.err << FailureLine(error.Path(), error.what());
        return ExitCode::Rejected;
    }
}

}  // namespace

void AddReportCommand(CLI::App& app, Console& console, int& exitCode)
{
    const auto request = std::make_shared<ReportRequest>();
    CLI::App* command = app.add_subcommand("report", "Make a page on many tills, to look at in a browser");
    command->add_option("FILE", request->names, SetupNamesText)->type_name("")->required();
    AddPath(*command, "--standard", request->standard, "FILE",
            "Tell how each setup deviates from that setup file");
    AddPath(*command, "--results", request->results, "FOLDER",
            "Tell what was last done with each till, from the *.json and *.jsonl of that folder");
    command->add_option("-o,--output", request->output, "Write to that file, whose name ends in .html")
        ->type_name("OUT")
        ->check(CheckPageName);
    command->add_flag("--json", request->json,
                      "Print how many tills deviate and failed as an object; needs --output");
    command->footer(
        "A row a till: its devices, options, deviations and last result; a click shows all keys.\n"
        "The page needs no network. Results are those of a fleet's run, of a series, or a journal;\n"
        "a till is known by the name of its file, in letters of any case (A to Z alone). Where a\n"
        "fleet's result names one of the files as the till's setup, its row shows that one. A file\n"
        "that is no setup has a row with the reason. A page that is replaced is kept under its name\n"
        "and \".bak\".");
    command->callback([request, &console, &exitCode] {
        request->now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
        exitCode = MakeReport(*request, console);
    });
}

}  // namespace kelvora
