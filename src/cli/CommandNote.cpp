#include "cli/CommandNote.h"

#include "cli/LineReport.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora {

OperationNote BeginNote(const char* operation, const LineOptions& options, LineAccess& access)
{
    return {access.OperationJournal(), operation, options.port, access.Port(options.port).Device()};
}

void EndNote(OperationNote& note, Console& console)
{
    if (const std::string why = note.End(); !why.empty())
        console.err << DiagnosticLine("the journal could not be kept: " + OneLineText(why));
}

std::string ContentOf(const std::string& path)
{
    try {
        return PosixFiles().Read(path);
    } catch (const FileError&) {
        return {};
    }
}

}  // namespace kelvora
