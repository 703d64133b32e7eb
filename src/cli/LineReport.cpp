#include "cli/LineReport.h"

#include "cli/FlashJson.h"
#include "comms/LineErrorText.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora {

int RefuseFile(const LineOptions& options, const std::string& file, const Refusal& why, Console& console)
{
    console.err << why.line;
    if (options.json)
        Emit(console, UnreadJson(options.port, file, why.message));
    return ExitCode::Rejected;
}

bool WorkOnOutput(const LineOptions& options, Console& console, const std::function<void(Files&)>& work)
{
    try {
        PosixFiles files;
        work(files);
        return true;
    } catch (const FileError& error) {
        RefuseFile(options, error.Path(), FailureOf(error.Path(), error.what()), console);
        return false;
    }
}

int RefuseUnasked(Console& console)
{
    console.err << DiagnosticLine("there is no terminal to ask on; --yes writes without asking");
    return ExitCode::Usage;
}

std::string LineMessageText(const MessageId& message, std::string_view extra)
{
    return OneLineText(std::string(message.fallback).append("\n").append(extra));
}

void TellWarnings(const LineTarget& target, const LineResult& result, Console& console)
{
    for (const std::string& warning : WarningLines(MessageCatalogue(), result.warnings))
        console.err << DiagnosticLine(PortName(target.line) + ": " + OneLineText(warning));
}

std::string LineFailureText(const LineTarget& target, const LineResult& result)
{
    if (result.outcome == LineOutcome::Stopped)
        return "stopped";
    const LineErrorText error = DescribeLineFailure(MessageCatalogue(), target, result);
    return LineMessageText(error.message, error.extra);
}

}  // namespace kelvora
