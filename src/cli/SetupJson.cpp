#include "cli/SetupJson.h"

#include <nlohmann/json.hpp>

#include "cli/SetupFromJson.h"
#include "keymap/Models.h"
#include "platform/Encoding.h"

namespace kelvora {

namespace {

using Json = nlohmann::ordered_json;

Json ModuleObject(const ModuleRecord& record, const SetupDocument& document)
{
    Json object;
    object["position"] = record.Position;
    object["kind"] = KindName(record.Kind);
    object["deviceCode"] = record.DeviceCode;
    object["firstKeyNumber"] = nullptr;
    if (FindModel(record.Kind))
        object["firstKeyNumber"] = FirstKeyNumber(record.Kind, document.Modules);
    object["keyMap"] = Utf8FromText(record.KeyMap);
    object["options"] = Utf8FromText(record.Options);
    return object;
}

}  // namespace

nlohmann::ordered_json VerdictObject(const std::string& path, const Verdict& verdict)
{
    const bool ok = verdict.outcome == Verdict::Outcome::Accepted;
    const bool rejected = verdict.outcome == Verdict::Outcome::Rejected;
    Json object;
    object["file"] = Utf8FromPath(path);
    object["ok"] = ok;
    object["error"] = rejected ? Json(ErrorNumberText(verdict.number)) : Json();
    object["line"] = rejected ? Json(verdict.line) : Json();
    object["message"] = ok ? Json() : Json(verdict.message);
    return object;
}

std::string VerdictJson(const std::string& path, const Verdict& verdict)
{
    return VerdictObject(path, verdict).dump() + "\n";
}

int Refuse(bool json, const std::string& path, const std::string& why, Console& console)
{
    console.err << FailureLine(path, why);
    if (json)
        Emit(console, Json{{"file", Utf8FromPath(path)}, {"message", why}}.dump() + "\n");
    return ExitCode::Rejected;
}

nlohmann::ordered_json DeviceMapJson(std::string_view deviceMap)
{
    Json codes = Json::array();
    for (const char code : deviceMap)
        codes.push_back(static_cast<unsigned char>(code));
    return codes;
}

nlohmann::ordered_json SetupObject(const std::string& path, const SetupDocument& document)
{
    Json object;
    object["file"] = Utf8FromPath(path);
    object["deviceMap"] = DeviceMapJson(document.DeviceMap);
    object["modules"] = Json::array();
    for (const ModuleRecord& record : document.Modules)
        object["modules"].push_back(ModuleObject(record, document));
    return object;
}

std::string SetupJson(const std::string& path, const SetupDocument& document)
{
    Json object;
    object["$schema"] = SetupSchema;
    object.update(SetupObject(path, document));
    return object.dump() + "\n";
}

}  // namespace kelvora
