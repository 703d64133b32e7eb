// A report as one HTML page that needs nothing else: no network, no file beside it. Without a script it is a
// plain table; with one, a table that can be searched, filtered and sorted, and a sheet of each till.
#pragma once

#include <string>

#include "report/ReportData.h"

namespace kelvora {

std::string ReportPage(const FleetReport& report, const ReportHeading& heading);

/// "10000 tills: 12 deviate, 3 failed, 1 could not be read".
std::string CountsText(const ReportCounts& counts, bool hasStandard);

}  // namespace kelvora
