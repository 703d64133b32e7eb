// The command "edit": settings and keys changed in many setup files alike.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "cli/Console.h"
#include "cli/LineAccess.h"

namespace CLI {
class App;
}

namespace kelvora {

struct EditRequest {
    std::vector<std::string> names;  ///< files and folders, as for the command "check"
    std::vector<std::string> set;    ///< as ParseSetting takes them, in UTF-8
    std::vector<std::pair<std::string, std::string>> keysFrom;  ///< a setup file, and the module in it
    std::vector<std::string> where;  ///< as ParseCondition takes them; all are to hold
    bool dryRun = false;             ///< nothing is written, and nothing asked
    bool yes = false;                ///< nothing is asked
    bool json = false;               ///< with one of these two
};

/// Prints what changes in each setup, asks once for all (on `access`), and saves those that change. One in
/// which a change is not legal is told and left whole, and so is one that has changed since it was shown.
/// Returns the exit code. Throws OutputError.
int Edit(const EditRequest& request, Console& console, LineAccess& access);

void AddEditCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode);

}  // namespace kelvora
