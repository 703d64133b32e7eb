// A report as the object that its page's script reads.
#pragma once

#include <chrono>
#include <string>

#include "report/FleetReport.h"

namespace kelvora {

struct ReportHeading {
    std::string folder;    ///< where the setups are; UTF-8
    std::string standard;  ///< the file that they are compared with; empty for none
    std::chrono::sys_seconds made{};
};

/// {"made", "compared", "modules", "setups", "lines", "pictures", "keyTypes", "texts", "lists", "tills"}, on
/// one line, that may stand within a script element. Tills, setups and lists name what they share by its
/// place; a till has no name for what it does not have.
std::string ReportData(const FleetReport& report, const ReportHeading& heading);

}  // namespace kelvora
