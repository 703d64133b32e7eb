// The command "format": a setup file written anew, as a setup window saves it.
#pragma once

#include <string>

#include "cli/Console.h"

namespace CLI {
class App;
}

namespace kelvora {

struct FormatRequest {
    std::string file;
    std::string output;  ///< where it is written, the old file kept as ".bak"; standard output when empty
    bool json = false;
};

/// Returns the exit code; nothing is written unless the file is accepted. Throws OutputError.
int Format(const FormatRequest& request, Console& console);

void AddFormatCommand(CLI::App& app, Console& console, int& exitCode);

}  // namespace kelvora
