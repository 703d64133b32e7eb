// The commands of kelvora-cli: each adds itself to the command line and, when it has been asked for, runs and
// sets the exit code.
#pragma once

#include <string>

#include "cli/Console.h"
#include "cli/LineAccess.h"

namespace CLI {
class App;
}

namespace kelvora {

/// Adds an option whose value is a path, which must not be empty; `type` stands for it in the help.
void AddPath(CLI::App& command, const std::string& names, std::string& path, const std::string& type,
             const std::string& help);

void AddCheckCommand(CLI::App& app, Console& console, int& exitCode);
void AddShowCommand(CLI::App& app, Console& console, int& exitCode);
void AddMakeCommand(CLI::App& app, Console& console, int& exitCode);
void AddReportCommand(CLI::App& app, Console& console, int& exitCode);
void AddDiffCommand(CLI::App& app, Console& console, int& exitCode);
void AddFormatCommand(CLI::App& app, Console& console, int& exitCode);
void AddImageCommand(CLI::App& app, Console& console, int& exitCode);
void AddRenderCommand(CLI::App& app, Console& console, int& exitCode);
void AddEditCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode);
void AddScanCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode);
void AddDownloadCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode);
void AddRestoreCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode);
void AddVerifyCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode);
void AddDumpCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode);
void AddIdentityCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode);
void AddSeriesCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode);
void AddJournalCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode);

}  // namespace kelvora
