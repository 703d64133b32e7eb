// The command "show": the modules of setup files, with their options and key grids.
#pragma once

#include <string>
#include <vector>

#include "cli/Console.h"
#include "setup/SetupDocument.h"

namespace CLI {
class App;
}

namespace kelvora {

struct ShowRequest {
    std::vector<std::string> names;  ///< files and folders, as for the command "check"
    bool json = false;
};

/// A setup for people: a line a module, and under it the grid of a keyboard. UTF-8.
std::string SetupText(const SetupDocument& document);

/// Prints the setups in the order of the names; a file that is rejected or cannot be read gives a
/// diagnostic. Returns the exit code. Throws OutputError.
int Show(const ShowRequest& request, Console& console);

void AddShowCommand(CLI::App& app, Console& console, int& exitCode);

}  // namespace kelvora
