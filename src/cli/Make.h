// The command "make": a setup file from the JSON of a setup.
#pragma once

#include <string>

#include "cli/Console.h"

namespace CLI {
class App;
}

namespace kelvora {

struct MakeRequest {
    std::string name;    ///< a file, or "-" for standard input
    std::string output;  ///< where the setup is written; standard output when empty
    bool json = false;
};

/// Writes the setup as the program saves it; a file that is replaced is kept as ".bak". Nothing is written of
/// what is no setup. Returns the exit code. Throws OutputError.
int Make(const MakeRequest& request, Console& console);

void AddMakeCommand(CLI::App& app, Console& console, int& exitCode);

}  // namespace kelvora
