// The command "scan": the modules that hang on a line, as a setup.
#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/FlashJson.h"
#include "cli/LineAccess.h"
#include "cli/LineReport.h"
#include "cli/LineRun.h"
#include "cli/SetupJson.h"
#include "cli/Show.h"
#include "flash/OwnBackup.h"
#include "layout/ScanTexts.h"
#include "setup/SetupWriter.h"

namespace kelvora {

namespace {

struct ScanRequest {
    LineOptions line;
    std::string output;  ///< the setup file to write; empty for none
};

ScanOutcome RunScan(const ScanRequest& request, Console& console, LineAccess& access)
{
    LineRun run(request.line, console, access);
    OperationNote note = BeginNote(JournalOperation::Scan, request.line, access);
    ScanOutcome scan = ScanLine(run.comms, request.line.Target(), run.hooks);
    note.Tell(request.line.Target(), scan.line);
    EndNote(note, console);
    return scan;
}

// A map without its keys is for a window, which shows it all the same.
int ReportFailure(const ScanRequest& request, const ScanOutcome& scan, Console& console)
{
    std::string why;
    for (const LaterMessage& message : DescribeScan(MessageCatalogue(), request.line.Target(), scan)) {
        const std::string text = LineMessageText(message.message, message.extra);
        console.err << DiagnosticLine(text);
        why += (why.empty() ? "" : " ") + text;
    }
    if (request.line.json)
        Emit(console, UnscannedJson(request.line.port, why, scan.line));
    return ExitCode::Line;
}

void PrintSetup(const ScanRequest& request, const ScanOutcome& scan, const std::vector<std::string>& remarks,
                Console& console)
{
    if (request.line.json) {
        auto object = SetupObject(PortName(request.line.port), scan.document);
        object["warnings"] = remarks;
        Emit(console, object.dump() + "\n");
    } else if (request.output.empty()) {
        Emit(console, SetupText(scan.document));
    }
}

// Prints the setup and writes it where it is wanted. Nothing is printed or written when the line fails.
// Returns the exit code. Throws OutputError, LineAccessError.
int Scan(const ScanRequest& request, Console& console, LineAccess& access)
{
    if (!WorkOnOutput(request.line, console,
                      [&](const Files& files) { RequireOwnBackup(files, request.output); }))
        return ExitCode::Rejected;
    const ScanOutcome scan = RunScan(request, console, access);
    if (!scan.IsWhole())
        return ReportFailure(request, scan, console);
    std::vector<std::string> remarks;
    for (const std::string& remark : ScanRemarks(MessageCatalogue(), scan))
        remarks.push_back(OneLineText(remark));
    for (const std::string& remark : remarks)
        console.err << DiagnosticLine(PortName(request.line.port) + ": " + remark);
    if (!request.output.empty() && !WorkOnOutput(request.line, console, [&](Files& files) {
            SaveTextFileUnasked(files, request.output, WriteSetup(scan.document.Modules));
        }))
        return ExitCode::Rejected;
    PrintSetup(request, scan, remarks, console);
    return ExitCode::Done;
}

}  // namespace

void AddScanCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode)
{
    const auto request = std::make_shared<ScanRequest>();
    CLI::App* command = app.add_subcommand("scan", "Ask a line for its modules, with their options and keys");
    AddLineOptions(*command, request->line);
    AddPath(*command, "-o,--output", request->output, "FILE",
            "Write the setup to that file; its old content is kept as \".bak\"");
    command->callback(
        [request, &console, &access, &exitCode] { exitCode = Scan(*request, console, access); });
}

}  // namespace kelvora
