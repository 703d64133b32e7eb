// The command "report": one page on many tills, for people who look rather than read.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "cli/Console.h"

namespace CLI {
class App;
}

namespace kelvora {

struct ReportRequest {
    std::vector<std::string> names;  ///< files and folders, as for the command "check"
    std::string standard{};          ///< the setup that the others are compared with; empty for none
    std::string results{};           ///< the folder of the results; empty for none
    std::string output{};            ///< standard output when empty
    bool json = false;
    std::chrono::sys_seconds now{};
};

/// Writes the page; what is replaced is kept under its name and ".bak". Files that are not accepted give a
/// diagnostic and a row with the reason; without the standard, or the folder of the results, there is no
/// page. Returns the exit code. Throws OutputError.
int MakeReport(const ReportRequest& request, Console& console);

void AddReportCommand(CLI::App& app, Console& console, int& exitCode);

}  // namespace kelvora
