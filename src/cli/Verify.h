// The command "verify": does the device on a line hold what a setup file says?
#pragma once

#include <string>

#include "cli/Console.h"
#include "cli/LineAccess.h"

namespace kelvora {

struct VerifyRequest {
    LineOptions line;
    std::string file;
};

/// Compares what the setup decides; prints the outcome and what differs. Returns the exit code: Rejected when
/// something does. Throws OutputError, LineAccessError.
int VerifyFile(const VerifyRequest& request, Console& console, LineAccess& access);

void AddVerifyCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode);

}  // namespace kelvora
