// One command's work on a line: the line made ready, Ctrl+C as the wish to stop, the progress on the
// terminal; and the work as the journal keeps it.
#pragma once

#include <ostream>
#include <string>

#include "cli/Console.h"
#include "cli/LineAccess.h"
#include "comms/LineWork.h"
#include "journal/OperationNote.h"

namespace kelvora {

/// A progress bar on one line of a terminal, drawn anew as the work goes on and wiped at its end.
class ProgressLine {
public:
    /// `out` is a terminal and outlives the line; null shows nothing.
    explicit ProgressLine(std::ostream* out) : out_(out) {}
    ~ProgressLine() { Wipe(); }
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void Show(const LineProgress& progress);

    /// Wipes the line: something else is to stand there.
    void Wipe();

private:
    std::ostream* out_;
    std::string shown_;
};

struct LineRun {
    /// Throws LineAccessError. All three outlive the object.
    LineRun(const LineOptions& options, Console& console, LineAccess& access)
        : comms(access.Prepare(options)),
          bar(access.ShowsProgress() ? &console.err : nullptr),
          hooks{[&access] { return access.StopRequested(); },
                [this](const LineProgress& progress) { bar.Show(progress); }}
    {
    }
    LineRun(const LineRun&) = delete;
    LineRun& operator=(const LineRun&) = delete;
    ~LineRun() = default;

    Comms& comms;
    ProgressLine bar;
    LineHooks hooks;
};

/// Begins with the work on the line, which is prepared.
OperationNote BeginNote(const char* operation, const LineOptions& options, LineAccess& access);

/// Keeps it. A journal that cannot be kept is told and changes nothing else.
void EndNote(OperationNote& note, Console& console);

/// The content of a file that was read before, for its hash; empty when it is no longer readable.
std::string ContentOf(const std::string& path);

}  // namespace kelvora
