// The commands of kelvora-cli: each adds itself to the command line and, when it has been asked for, runs and
// sets the exit code.
#pragma once

#include "cli/Console.h"
#include "cli/LineAccess.h"

namespace CLI {
class App;
}

namespace kelvora {

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
