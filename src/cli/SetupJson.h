// Results as JSON objects, one a line, for other programs. All texts are UTF-8.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

#include "cli/Console.h"
#include "cli/Verdict.h"
#include "setup/SetupDocument.h"

namespace kelvora {

/// {"file", "ok", "error", "line", "message"}; the last three are null where they do not apply. What a
/// command makes of the file may follow.
nlohmann::ordered_json VerdictObject(const std::string& path, const Verdict& verdict);

/// The same as a line.
std::string VerdictJson(const std::string& path, const Verdict& verdict);

/// Tells on `console` why nothing comes of a file, and as {"file", "message"} where `json` is set. Gives
/// ExitCode::Rejected.
int Refuse(bool json, const std::string& path, const std::string& why, Console& console);

/// Device codes as numbers, one for each position.
nlohmann::ordered_json DeviceMapJson(std::string_view deviceMap);

/// {"file", "deviceMap": [214, 23, 4], "modules": [{"position", "kind", "deviceCode", "firstKeyNumber",
/// "keyMap", "options"}]}; "firstKeyNumber" is null for a module without keys, "position" counts from 0.
nlohmann::ordered_json SetupObject(const std::string& path, const SetupDocument& document);

/// The same with "$schema" in front, as a line, which SetupFromJson takes.
std::string SetupJson(const std::string& path, const SetupDocument& document);

}  // namespace kelvora
