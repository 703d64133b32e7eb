// The page of a report without what it tells, with its style and its script: made of page/ at the build.
#pragma once

#include <string_view>

namespace kelvora {

/// Holds a place for each part that a report puts in, "{{DATA}}" say, in the order in which they are filled.
extern const std::string_view ReportTemplate;

}  // namespace kelvora
