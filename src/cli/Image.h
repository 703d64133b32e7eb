// The command "image": the flash image of a setup file, without a device.
#pragma once

#include <string>

#include "cli/Console.h"

namespace CLI {
class App;
}

namespace kelvora {

struct ImageRequest {
    std::string file;
    std::string output;  ///< where it is written, the old file kept as ".bak"; standard output when empty
    bool json = false;
};

/// Writes the image as a dump; what a device would hold and the setup does not say is erased in it. Returns
/// the exit code. Throws OutputError.
int Image(const ImageRequest& request, Console& console);

void AddImageCommand(CLI::App& app, Console& console, int& exitCode);

}  // namespace kelvora
