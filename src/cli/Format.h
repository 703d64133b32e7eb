// The command "format": setup files written anew, as a setup window saves them.
#pragma once

#include <string>
#include <vector>

#include "cli/Console.h"

namespace CLI {
class App;
}

namespace kelvora {

struct FormatRequest {
    std::vector<std::string> names;  ///< files and folders, as for the command "check"
    std::string output;              ///< where the one is written; standard output when empty
    std::string outputFolder;        ///< where each is written, under its name; not together with `output`
    bool inPlace = false;            ///< each is written over itself; not together with either
    bool json = false;
};

/// A file that is replaced is kept as ".bak"; one that already has the content is left alone, with its
/// ".bak". Nothing is written of a file that is not accepted. Returns the exit code. Throws OutputError.
int Format(const FormatRequest& request, Console& console);

void AddFormatCommand(CLI::App& app, Console& console, int& exitCode);

}  // namespace kelvora
