// The command "series": the same setup, or each terminal's own, into one till after another on one line.
#pragma once

#include <string>

#include "cli/Console.h"
#include "cli/LineAccess.h"

namespace kelvora {

struct SeriesRequest {
    LineOptions line;
    std::string setup;   ///< a setup file; empty with `folder`
    std::string folder;  ///< of the terminals' own setups; empty with `setup`
    int count = 0;       ///< tills after which it ends; 0 for never
    bool yes = false;    ///< not asked
};

/// Asks once, then prints what happens as it does. Returns the exit code. Throws OutputError,
/// LineAccessError.
int RunSeries(const SeriesRequest& request, Console& console, LineAccess& access);

void AddSeriesCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode);

}  // namespace kelvora
