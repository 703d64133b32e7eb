// The command "verify": does the device on a line hold what a setup file says?
#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/FlashJson.h"
#include "cli/LineAccess.h"
#include "cli/LineReport.h"
#include "cli/LineRun.h"
#include "cli/Verdict.h"
#include "flash/TransferTexts.h"

namespace kelvora {

namespace {

struct VerifyRequest {
    LineOptions line;
    std::string file;
};

int ExitCodeOf(VerifyResult::Outcome outcome)
{
    using enum VerifyResult::Outcome;
    switch (outcome) {
        case Same:
            return ExitCode::Done;
        case Different:
        case NotBuilt:
            return ExitCode::Rejected;
        case NotRead:
            break;
    }
    return ExitCode::Line;
}

void Report(const VerifyRequest& request, const VerifyResult& result, Console& console)
{
    const MessageCatalogue english;
    const OutcomeText text = DescribeVerify(english, request.line.Target(), result, 0);
    const bool isCompared =
        result.outcome == VerifyResult::Outcome::Same || result.outcome == VerifyResult::Outcome::Different;
    if (!isCompared)
        console.err << DiagnosticLine(OneLineText(text.text + "\n" + text.extra));
    if (isCompared && !result.line.IsDone())
        console.err << DiagnosticLine(LineFailureText(request.line.Target(), result.line));
    if (isCompared)
        TellWarnings(request.line.Target(), result.line, console);
    if (request.line.json)
        return Emit(console, VerifyJson(request.line.Target(), request.file, result));
    if (!isCompared)
        return;
    std::string lines = PortName(request.line.port) + ": " + OneLineText(text.text) + "\n";
    for (const std::string& line : DifferenceLines(english, result.differences))
        lines += "  " + OneLineText(line) + "\n";
    Emit(console, lines);
}

// Compares what the setup decides; prints the outcome and what differs. Returns the exit code: Rejected when
// something does. Throws OutputError, LineAccessError.
int VerifyFile(const VerifyRequest& request, Console& console, LineAccess& access)
{
    Refusal why;
    const auto document = AcceptedSetup(request.file, why);
    if (!document)
        return RefuseFile(request.line, request.file, why, console);
    const VerifyResult result = [&] {
        LineRun run(request.line, console, access);
        OperationNote note = BeginNote(JournalOperation::Verify, request.line, access);
        note.OfFile(request.file, ContentOf(request.file));
        VerifyResult verified = Verify(run.comms, request.line.Target(), run.hooks, *document, nullptr);
        note.Tell(request.line.Target(), verified);
        EndNote(note, console);
        return verified;
    }();
    Report(request, result, console);
    return ExitCodeOf(result.outcome);
}

}  // namespace

void AddVerifyCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode)
{
    const auto request = std::make_shared<VerifyRequest>();
    CLI::App* command = app.add_subcommand("verify", "Compare a line's device with a setup file");
    AddLineOptions(*command, request->line);
    command->add_option("FILE", request->file, "Setup file")->type_name("")->required();
    command->footer(
        "Modules, options and keys are compared, from the file to the device. What the keys send is not in "
        "a\n"
        "setup file and is left out.\n\n" +
        std::string(LineExitCodes));
    command->callback(
        [request, &console, &access, &exitCode] { exitCode = VerifyFile(*request, console, access); });
}

}  // namespace kelvora
