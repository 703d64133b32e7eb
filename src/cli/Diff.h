// The command "diff": what is different between a setup file and others.
#pragma once

#include <string>
#include <vector>

#include "cli/Console.h"

namespace CLI {
class App;
}

namespace kelvora {

struct DiffRequest {
    std::string before;
    std::vector<std::string> after;  ///< each is compared with `before`
    bool json = false;
    bool quiet = false;  ///< nothing is printed
};

/// Prints the differences of each pair that has some, a line each. Returns the exit code as programs of this
/// name do: 0 all are the same, 1 some differ, 2 a file was rejected or could not be read. Throws
/// OutputError.
int Diff(const DiffRequest& request, Console& console);

void AddDiffCommand(CLI::App& app, Console& console, int& exitCode);

}  // namespace kelvora
