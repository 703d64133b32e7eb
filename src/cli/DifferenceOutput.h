// The differences between two setups as the commands print them.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "setup/SetupDifferences.h"

namespace kelvora {

/// A line that names each of the two files, and a line a difference; empty without one. UTF-8.
std::string DifferencesText(const std::string& before, const std::string& after,
                            const std::vector<SetupDifference>& differences);

/// A list of {"what", "module", "track", "keyBefore", "keyAfter", "before", "after", "text"}; null where it
/// does not apply.
nlohmann::ordered_json DifferenceObjects(const std::vector<SetupDifference>& differences);

/// {"before", "after", "same", "differences"} as a line. Of a file without another the path of the other is
/// empty, and null here.
std::string DifferencesJson(const std::string& before, const std::string& after,
                            const std::vector<SetupDifference>& differences);

}  // namespace kelvora
