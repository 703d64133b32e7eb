#include "cli/LineRun.h"

#include "cli/LineReport.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora {

void ProgressLine::Wipe()
{
    if (out_ && !shown_.empty())
        *out_ << '\r' << std::string(shown_.size(), ' ') << '\r' << std::flush;
    shown_.clear();
}

void ProgressLine::Show(const LineProgress& progress)
{
    constexpr std::size_t Width = 40;
    if (!out_)
        return;
    const std::size_t full = Width * progress.done / progress.total;
    std::string line = "[" + std::string(full, '#') + std::string(Width - full, '.') + "] " +
                       std::to_string(100 * progress.done / progress.total) + " %";
    if (progress.left)
        line += ", " + std::to_string(progress.left->count()) + " s left";
    const std::string rest(line.size() < shown_.size() ? shown_.size() - line.size() : 0, ' ');
    *out_ << '\r' << line << rest << std::flush;
    shown_ = line;
}

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
