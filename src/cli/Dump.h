// The command "dump": the flash image of the device on a line, as a dump that can be restored.
#pragma once

#include <string>

#include "cli/Console.h"
#include "cli/LineAccess.h"

namespace kelvora {

struct DumpRequest {
    LineOptions line;
    std::string output;  ///< where it is written, the old file kept as ".bak"; standard output when empty
};

/// Nothing is printed or written when the line fails. Returns the exit code. Throws OutputError,
/// LineAccessError.
int Dump(const DumpRequest& request, Console& console, LineAccess& access);

void AddDumpCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode);

}  // namespace kelvora
