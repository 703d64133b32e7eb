// The command "check": which setup files would a setup window accept?
#pragma once

#include <string>
#include <vector>

#include "cli/Console.h"

namespace CLI {
class App;
}

namespace kelvora {

struct CheckRequest {
    std::vector<std::string> names;  ///< files, folders, "-" for names on standard input
    bool json = false;
    bool verbose = false;        ///< accepted files have a line too
    bool quiet = false;          ///< no summary
    bool nullSeparated = false;  ///< names on standard input end with a NUL
};

/// Prints a line for each file that is rejected, in the order of the names, and a summary as a diagnostic.
/// Returns the exit code. Throws OutputError.
int Check(const CheckRequest& request, Console& console);

void AddCheckCommand(CLI::App& app, Console& console, int& exitCode);

}  // namespace kelvora
