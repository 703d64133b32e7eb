#include "cli/Scan.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "app/TextFiles.h"
#include "cli/FlashJson.h"
#include "cli/LineReport.h"
#include "cli/LineRun.h"
#include "cli/SetupJson.h"
#include "cli/Show.h"
#include "layout/LineScan.h"
#include "platform/posix/PosixFiles.h"
#include "setup/SetupWriter.h"

namespace kelvora {

namespace {

ScanOutcome RunScan(const ScanRequest& request, Console& console, LineAccess& access)
{
    LineRun run(request.line, console, access);
    return ScanLine(run.comms, request.line.Target(), ConnectionMode::Pos, run.hooks, MessageCatalogue());
}

// What a map without its keys would need is for a window, which shows it all the same.
int ReportFailure(const ScanRequest& request, const ScanOutcome& scan, Console& console)
{
    std::string why = "stopped";
    if (scan.outcome != LineOutcome::Stopped && !scan.messages.empty())
        why = LineMessageText(scan.messages.front().message, scan.messages.front().extra);
    console.err << DiagnosticLine(why);
    if (request.line.json)
        Emit(console, UnreadJson(request.line.port, {}, why));
    return ExitCode::Line;
}

}  // namespace

int Scan(const ScanRequest& request, Console& console, LineAccess& access)
{
    const ScanOutcome scan = RunScan(request, console, access);
    if (scan.outcome != LineOutcome::Done || scan.document.DeviceMap.empty())
        return ReportFailure(request, scan, console);
    for (const LaterMessage& message : scan.messages)
        console.err << DiagnosticLine(LineMessageText(message.message, message.extra));
    const std::string port = PortName(request.line.port);
    if (!request.output.empty()) {
        try {
            PosixFiles files;
            SaveTextFile(files, request.output, WriteSetup(scan.document.Modules));
        } catch (const FileError& error) {
            return RefuseFile(request.line, error.Path(), FailureOf(error.Path(), error.what()), console);
        }
    }
    if (request.line.json)
        Emit(console, SetupJson(port, scan.document));
    else if (request.output.empty())
        Emit(console, SetupText(scan.document));
    return ExitCode::Done;
}

void AddScanCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode)
{
    const auto request = std::make_shared<ScanRequest>();
    CLI::App* command = app.add_subcommand("scan", "Ask a line for its modules, with their options and keys");
    AddLineOptions(*command, request->line);
    command
        ->add_option("-o,--output", request->output,
                     "Write the setup to that file; its old content is kept as \".bak\"")
        ->type_name("FILE");
    command->callback(
        [request, &console, &access, &exitCode] { exitCode = Scan(*request, console, access); });
}

}  // namespace kelvora
