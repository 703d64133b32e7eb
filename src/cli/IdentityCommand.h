// The options of the command "identity", which cli/Identity.h carries out.
#pragma once

#include "cli/Console.h"
#include "cli/LineAccess.h"

namespace kelvora {

void AddIdentityCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode);

}  // namespace kelvora
