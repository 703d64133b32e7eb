// The command "dump": the flash image of the device on a line, as a dump that can be restored.
#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/FlashJson.h"
#include "cli/LineAccess.h"
#include "cli/LineReport.h"
#include "cli/LineRun.h"
#include "flash/DumpSource.h"
#include "flash/OwnBackup.h"
#include "platform/LocalTime.h"

namespace kelvora {

namespace {

struct DumpRequest {
    LineOptions line;
    std::string output;  ///< where it is written, the old file kept as ".bak"; standard output when empty
};

// Nothing is printed or written when the line fails. Returns the exit code. Throws OutputError,
// LineAccessError.
int Dump(const DumpRequest& request, Console& console, LineAccess& access)
{
    if (!WorkOnOutput(request.line, console,
                      [&](const Files& files) { RequireOwnBackup(files, request.output); }))
        return ExitCode::Rejected;
    const LineTarget target = request.line.Target();
    const LineResult read = [&] {
        LineRun run(request.line, console, access);
        OperationNote note = BeginNote(JournalOperation::Dump, request.line, access);
        LineResult result = ScanWithUpload(run.comms, target, run.hooks);
        note.Tell(target, result);
        EndNote(note, console);
        return result;
    }();
    if (!read.IsDone())
        console.err << DiagnosticLine(LineFailureText(target, read));
    TellWarnings(target, read, console);
    // An image that came is whole, whatever happened after it.
    if (read.image.empty()) {
        if (request.line.json)
            Emit(console, DumpJson(target, read, {}));
        return ExitCode::Line;
    }
    const FlashImage image = ImageFrom(read.image).value();
    const DumpSource source{{target.line, LocalTime()}, read.deviceMap, read.terminalName};
    const std::string dump = FormatFlashDump(DumpOfDevice(image, source));
    if (!request.output.empty() && !WorkOnOutput(request.line, console, [&](Files& files) {
            SaveTextFileUnasked(files, request.output, dump);
        }))
        return ExitCode::Rejected;
    if (request.line.json)
        Emit(console, DumpJson(target, read, request.output));
    else if (request.output.empty())
        Emit(console, dump);
    return read.IsDone() ? ExitCode::Done : ExitCode::Line;
}

}  // namespace

void AddDumpCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode)
{
    const auto request = std::make_shared<DumpRequest>();
    CLI::App* command = app.add_subcommand("dump", "Read the flash memory of a line's device, as a dump");
    AddLineOptions(*command, request->line);
    AddPath(*command, "-o,--output", request->output, "OUT",
            "Write the dump to that file; its old content is kept as \".bak\"");
    command->callback(
        [request, &console, &access, &exitCode] { exitCode = Dump(*request, console, access); });
}

}  // namespace kelvora
