// The command "journal": what was done with devices, from windows, commands and the wizard.
#include <CLI/CLI.hpp>
#include <memory>

#include "catalogue/OneLineText.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/LineAccess.h"
#include "journal/Journal.h"
#include "journal/JournalFilter.h"
#include "platform/Files.h"
#include "platform/PortName.h"

namespace kelvora {

namespace {

struct JournalRequest {
    JournalFilter filter;
    bool json = false;  ///< the entries as the journal has them
};

// For people: what is not known is left out.
std::string EntryLine(const JournalEntry& entry)
{
    std::string line = ShownTime(entry) + "  " + PortName(entry.line) + "  " + entry.operation + ": " +
                       ResultName(entry.result);
    for (const std::string& part : {entry.terminal, entry.modules, entry.file, entry.message})
        if (!part.empty())
            line += "; " + part;
    return WithoutControls(std::move(line)) + "\n";
}

std::string CheckDate(const std::string& text)
{
    return IsJournalDate(text) ? std::string() : "expected a day such as 2026-03-09, or 2026-03-09 07:05";
}

// Prints a line for each entry that fits, the oldest first. Returns the exit code. Throws OutputError.
int ShowJournal(const JournalRequest& request, Console& console, const LineAccess& access)
{
    JournalContent content;
    try {
        if (const Journal* const journal = access.OperationJournal())
            content = journal->Read();
    } catch (const FileError& error) {
        console.err << FailureLine(error.Path(), error.what());
        return ExitCode::Rejected;
    }
    std::string lines;
    for (const JournalEntry& entry : content.entries)
        if (Matches(entry, request.filter))
            lines += request.json ? JournalLine(entry) : EntryLine(entry);
    Emit(console, lines);
    if (content.damaged > 0)
        console.err << DiagnosticLine("damaged lines of the journal, left out: " +
                                      std::to_string(content.damaged));
    return ExitCode::Done;
}

}  // namespace

void AddJournalCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode)
{
    const auto request = std::make_shared<JournalRequest>();
    CLI::App* command = app.add_subcommand("journal", "Show what was done with devices");
    command->add_option("--since", request->filter.since, "Only what began on that day, or later")
        ->type_name("DATE")
        ->check(CheckDate);
    command
        ->add_option("--name", request->filter.name,
                     "Only terminals that call themselves so, in letters of any case")
        ->type_name("NAME");
    command->add_flag("--failed", request->filter.failedOnly,
                      "Only what failed, was stopped, or was found to differ");
    command->add_flag("--json", request->json, "Print each entry as an object on a line of its own");
    command->footer("Every operation on a device leaves an entry, whichever program it came from.");
    command->callback(
        [request, &console, &access, &exitCode] { exitCode = ShowJournal(*request, console, access); });
}

}  // namespace kelvora
