// One command's work on a line: the line made ready, Ctrl+C as the wish to stop, the progress on the
// terminal.
#pragma once

#include "cli/Console.h"
#include "cli/LineAccess.h"
#include "cli/ProgressLine.h"

namespace kelvora {

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

}  // namespace kelvora
