// A setup from the JSON that "show --json" prints. The shape is told in data/setup.schema.json; what may
// stand in it is what a setup file may hold, and judged by its reader.
#pragma once

#include <string_view>

#include "cli/UniqueJson.h"
#include "setup/SetupDocument.h"

namespace kelvora {

/// What the JSON of a setup calls its shape: where the schema is installed.
inline constexpr const char* SetupSchema = "file:///opt/kelvora/share/setup.schema.json";

/// Members that follow from others may be missing; those that are there must agree. Throws JsonError.
SetupDocument SetupFromJson(std::string_view text);

}  // namespace kelvora
