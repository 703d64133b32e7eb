// JSON whose objects have each member once: of two of one name nobody knows which is meant.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string_view>

namespace kelvora {

/// Throws SetupJsonError for what is no JSON, and for a member that stands there twice.
nlohmann::json ParseUniqueJson(std::string_view text);

}  // namespace kelvora
