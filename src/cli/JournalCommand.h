// The command "journal": what was done with devices, from windows, commands and the wizard.
#pragma once

#include "cli/Console.h"
#include "cli/LineAccess.h"
#include "journal/JournalFilter.h"

namespace kelvora {

struct JournalRequest {
    JournalFilter filter;
    bool json = false;  ///< the entries as the journal has them
};

/// Prints a line for each entry that fits, the oldest first. Returns the exit code. Throws OutputError.
int ShowJournal(const JournalRequest& request, Console& console, const LineAccess& access);

void AddJournalCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode);

}  // namespace kelvora
