// JSON as the program writes it for others: on one line, in UTF-8.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace kelvora {

/// What is no UTF-8 in its texts becomes U+FFFD.
inline std::string JsonText(const nlohmann::ordered_json& value)
{
    return value.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace kelvora
