#include "cli/DifferenceOutput.h"

#include <array>
#include <nlohmann/json.hpp>

#include "platform/Encoding.h"
#include "setup/SetupTexts.h"

namespace kelvora {

namespace {

using Json = nlohmann::ordered_json;
using What = SetupDifference::What;

constexpr std::array WhatNames{"added",     "removed",  "order",  "unknownModules", "tracks",
                               "separator", "autoRead", "fiscal", "backlight",      "key"};
static_assert(WhatNames.size() == static_cast<std::size_t>(What::Last) + 1);

std::string TextOf(const SetupDifference& difference)
{
    // Without a message file: the results of a command read the same on every machine.
    static const MessageCatalogue English;
    return Utf8FromText(Describe(English, difference));
}

// A side's value: the names of modules, the codes of unknown ones, else the text that a setup holds.
Json ValueObject(What what, const std::string& value)
{
    if (what == What::Added || what == What::Removed)
        return {};
    if (what != What::Order && what != What::UnknownModules)
        return Utf8FromText(value);
    Json list = Json::array();
    for (const char code : value)
        if (what == What::Order)
            list.push_back(KindName(static_cast<ModuleKind>(code)));
        else
            list.push_back(static_cast<unsigned char>(code));
    return list;
}

Json DifferenceObject(const SetupDifference& difference)
{
    const bool isKey = difference.what == What::Key;
    Json object;
    object["what"] = WhatNames.at(static_cast<std::size_t>(difference.what));
    object["module"] = difference.kind == ModuleKind::None ? Json() : Json(KindName(difference.kind));
    object["track"] = difference.what == What::Separator ? Json(difference.position) : Json();
    object["keyBefore"] = isKey ? Json(difference.numberBefore) : Json();
    object["keyAfter"] = isKey ? Json(difference.numberAfter) : Json();
    object["before"] = ValueObject(difference.what, difference.before);
    object["after"] = ValueObject(difference.what, difference.after);
    object["text"] = TextOf(difference);
    return object;
}

}  // namespace

std::string DifferencesText(const std::string& before, const std::string& after,
                            const std::vector<SetupDifference>& differences)
{
    if (differences.empty())
        return {};
    std::string text = "--- " + before + "\n+++ " + after + "\n";
    for (const SetupDifference& difference : differences)
        text += TextOf(difference) + "\n";
    return text;
}

nlohmann::ordered_json DifferenceObjects(const std::vector<SetupDifference>& differences)
{
    Json objects = Json::array();
    for (const SetupDifference& difference : differences)
        objects.push_back(DifferenceObject(difference));
    return objects;
}

std::string DifferencesJson(const std::string& before, const std::string& after,
                            const std::vector<SetupDifference>& differences)
{
    Json object;
    object["before"] = before.empty() ? Json() : Json(Utf8FromPath(before));
    object["after"] = after.empty() ? Json() : Json(Utf8FromPath(after));
    object["same"] = differences.empty() && !before.empty() && !after.empty();
    object["differences"] = DifferenceObjects(differences);
    return object.dump() + "\n";
}

}  // namespace kelvora
