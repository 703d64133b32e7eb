// The command "diff": what is different between a setup file and others, or the files of two folders.
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
    std::vector<std::string> after;  ///< each is compared with `before`: files and folders, as for the
                                     ///< command "check"; where `before` is a folder, folders
    bool json = false;
    bool quiet = false;  ///< nothing is printed
};

/// Prints the differences of each pair that has some, a line each. Of two folders the files are pairs that
/// have the same name below them, and one that stands in one of them only is told. Returns the exit code as
/// programs of this name do: 0 all are the same, 1 some differ, 2 a file was rejected or could not be read,
/// or there is none. Throws OutputError.
int Diff(const DiffRequest& request, Console& console);

void AddDiffCommand(CLI::App& app, Console& console, int& exitCode);

}  // namespace kelvora
