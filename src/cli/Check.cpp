// The command "check": which setup files would a setup window accept?
#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/OrderedSetups.h"
#include "cli/SetupJson.h"
#include "cli/SetupNames.h"
#include "cli/Verdict.h"

namespace kelvora {

namespace {

struct CheckRequest {
    std::vector<std::string> names;  ///< files, folders, "-" for names on standard input
    bool json = false;
    bool verbose = false;        ///< accepted files have a line too
    bool quiet = false;          ///< no summary
    bool nullSeparated = false;  ///< names on standard input end with a NUL
};

// Large enough that the threads seldom meet, small enough that the first results come at once.
constexpr std::size_t FilesPerBatch = 64;

struct Counts {
    std::size_t accepted = 0, rejected = 0, unreadable = 0;
};

struct CheckBatch {
    std::vector<FoundName> names;
    std::string results;
    std::string diagnostics;
    Counts counts;

    // Keeps their memory.
    void clear()
    {
        names.clear();
        results.clear();
        diagnostics.clear();
        counts = {};
    }
};

// A buffer that one large file made is not kept for the many small ones after it.
constexpr std::size_t MostKept = 1 << 20;

void Count(Counts& counts, Verdict::Outcome outcome)
{
    switch (outcome) {
        case Verdict::Outcome::Accepted:
            ++counts.accepted;
            break;
        case Verdict::Outcome::Rejected:
            ++counts.rejected;
            break;
        case Verdict::Outcome::Unreadable:
            ++counts.unreadable;
            break;
    }
}

void CheckFiles(CheckBatch& batch, const CheckRequest& request)
{
    std::string text;
    for (const FoundName& name : batch.names) {
        const Verdict verdict = CheckSetup(name, text);
        if (text.capacity() > MostKept)
            text = std::string();
        Count(batch.counts, verdict.outcome);
        const bool accepted = verdict.outcome == Verdict::Outcome::Accepted;
        if (request.json)
            batch.results += VerdictJson(name.path, verdict);
        if (verdict.outcome == Verdict::Outcome::Unreadable)
            batch.diagnostics += VerdictLine(name.path, verdict);
        else if (!request.json && (request.verbose || !accepted))
            batch.results += accepted ? name.path + ": ok\n" : VerdictLine(name.path, verdict);
    }
}

std::string SummaryLine(const Counts& counts)
{
    const std::size_t all = counts.accepted + counts.rejected + counts.unreadable;
    std::string text = std::to_string(all) + (all == 1 ? " file checked: " : " files checked: ");
    text += std::to_string(counts.accepted) + " accepted, " + std::to_string(counts.rejected) + " rejected";
    if (counts.unreadable > 0)
        text += ", " + std::to_string(counts.unreadable) + " not readable";
    return DiagnosticLine(text);
}

// Prints a line for each file that is rejected, in the order of the names, and a summary as a diagnostic.
// Returns the exit code. Throws OutputError.
int Check(const CheckRequest& request, Console& console)
{
    Counts counts;
    RunOrderedSetups<CheckBatch>(
        request.names, console.in, request.nullSeparated ? '\0' : '\n', FilesPerBatch,
        [](CheckBatch& batch, FoundName name) { batch.names.push_back(std::move(name)); },
        [&](CheckBatch& batch) { CheckFiles(batch, request); },
        [&](const CheckBatch& batch) {
            console.err << batch.diagnostics << std::flush;
            if (!batch.results.empty())
                Emit(console, batch.results);
            counts.accepted += batch.counts.accepted;
            counts.rejected += batch.counts.rejected;
            counts.unreadable += batch.counts.unreadable;
        });
    if (!request.quiet)
        console.err << SummaryLine(counts);
    return counts.rejected + counts.unreadable == 0 ? ExitCode::Done : ExitCode::Rejected;
}

}  // namespace

void AddCheckCommand(CLI::App& app, Console& console, int& exitCode)
{
    const auto request = std::make_shared<CheckRequest>();
    CLI::App* command = app.add_subcommand("check", "Tell which setup files are rejected, where and why");
    command->add_option("FILE", request->names, SetupNamesText)->type_name("");
    command->add_flag("--json", request->json, "Print an object a line for every file");
    command->add_flag("-0,--null", request->nullSeparated,
                      "Names on standard input end with a NUL, not a line feed");
    command->add_flag("-v,--verbose", request->verbose, "Print accepted files too");
    command->add_flag("-q,--quiet", request->quiet, "Leave out the summary");
    command->footer("Without FILE, or where it is -, names are read from standard input, one a line.");
    command->callback([request, &console, &exitCode] {
        if (request->names.empty())
            request->names.emplace_back(StandardInputName);
        exitCode = Check(*request, console);
    });
}

}  // namespace kelvora
