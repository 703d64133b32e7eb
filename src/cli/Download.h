// The commands "download" and "restore": a setup file, or a dump as it is, brought into the device on a line.
#pragma once

#include <string>

#include "cli/Console.h"
#include "cli/LineAccess.h"

namespace kelvora {

struct DownloadRequest {
    LineOptions line;
    std::string file;
    bool isDump = false;        ///< `file` is a dump
    bool yes = false;           ///< not asked
    bool eraseContent = false;  ///< the device may lose key contents
    bool thisLine = false;      ///< a dump that names no modules is for this line
};

/// Shows what will change and asks, keeps a backup, and prints what the device holds in the end. Returns the
/// exit code: Usage when nobody can be asked. Throws OutputError, LineAccessError.
int RunDownload(const DownloadRequest& request, Console& console, LineAccess& access);

void AddDownloadCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode);
void AddRestoreCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode);

}  // namespace kelvora
