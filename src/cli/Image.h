// The command "image": the flash images of setup files, without a device.
#pragma once

#include <string>
#include <vector>

#include "cli/Console.h"

namespace CLI {
class App;
}

namespace kelvora {

struct ImageRequest {
    std::vector<std::string> names;  ///< files and folders, as for the command "check"
    std::string output;              ///< where the one is written; standard output when empty
    std::string outputFolder;        ///< where each is written, named after its file; not with `output`
    bool json = false;
};

/// Writes the images as dumps; what a device would hold and the setup does not say is erased in them. What
/// is replaced in `output` is kept as a save does, in `outputFolder` under its name and ".bak". Returns the
/// exit code. Throws OutputError.
int Image(const ImageRequest& request, Console& console);

void AddImageCommand(CLI::App& app, Console& console, int& exitCode);

}  // namespace kelvora
