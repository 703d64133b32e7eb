// The command "scan": the modules that hang on a line, as a setup.
#pragma once

#include <string>

#include "cli/Console.h"
#include "cli/LineAccess.h"

namespace kelvora {

struct ScanRequest {
    LineOptions line;
    std::string output;  ///< the setup file to write; empty for none
};

/// Prints the setup and writes it where it is wanted. Nothing is printed or written when the line fails.
/// Returns the exit code. Throws OutputError, LineAccessError.
int Scan(const ScanRequest& request, Console& console, LineAccess& access);

void AddScanCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode);

}  // namespace kelvora
