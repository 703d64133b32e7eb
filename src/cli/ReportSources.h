// What a report is made from: the setup files of the tills, looked at on all cores, and the files with the
// results of what was done with them.
#pragma once

#include <string>
#include <vector>

#include "cli/Console.h"
#include "cli/SetupNames.h"
#include "report/FleetReport.h"

namespace kelvora {

/// Adds the tills of those files to the report, each under its path below the folder that was named, without
/// the ending. A file that is no setup is told and has its row all the same. Returns the exit code.
/// `standard` may be null.
int AddTills(FleetReport& report, const std::vector<FoundName>& names, const SetupDocument* standard,
             Console& console);

/// Adds what stands in the files "*.json" and "*.jsonl", in any letter case, in that folder and below it;
/// comes after AddTills. Files that hold no results (but for empty ones), and folders below it that cannot be
/// read, are told and left out. Returns the exit code. Throws FileError where the folder itself cannot be
/// read.
int AddResultsBelow(FleetReport& report, const std::string& folder, Console& console);

}  // namespace kelvora
