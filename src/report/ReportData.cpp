#include "report/ReportData.h"

#include <nlohmann/json.hpp>

#include "catalogue/MessageCatalogue.h"
#include "keymap/Models.h"
#include "platform/Encoding.h"
#include "platform/JsonText.h"
#include "platform/LocalTime.h"
#include "setup/SetupTexts.h"

namespace kelvora {

namespace {

using Json = nlohmann::ordered_json;

Json ObjectOf(const ReportModule& module)
{
    Json object{{"title", module.title}, {"facts", module.facts}};
    if (!module.keyMap.empty()) {
        object["map"] = module.keyMap;
        object["columns"] = module.columns;
        object["first"] = module.firstKeyNumber;
    }
    return object;
}

Json ObjectOf(const ReportSetup& setup)
{
    return {{"names", setup.names},
            {"options", setup.options},
            {"modules", setup.modules},
            {"picture", setup.picture}};
}

Json ObjectOf(const TillResult& result)
{
    Json object{{"action", result.action}, {"outcome", result.outcome}, {"time", ZonedTimeText(result.time)}};
    if (!result.message.empty())
        object["message"] = result.message;
    if (result.failed)
        object["failed"] = true;
    return object;
}

Json ObjectOf(const ReportTill& till)
{
    Json object{{"name", till.name}};
    if (!till.file.empty())
        object["file"] = till.file;
    if (!till.why.empty())
        object["why"] = till.why;
    if (till.setup)
        object["setup"] = *till.setup;
    if (till.deviations != 0)
        object["list"] = till.deviations;
    if (till.result)
        object["result"] = ObjectOf(*till.result);
    return object;
}

template <class Row>
Json ListOf(const std::vector<Row>& rows)
{
    Json list = Json::array();
    for (const Row& row : rows)
        list.push_back(ObjectOf(row));
    return list;
}

// What a key of each type is called, by the type as a key map has it.
Json KeyTypeTexts()
{
    const MessageCatalogue english;
    Json texts = Json::object();
    for (const char type : {KeyType::Unused, KeyType::Single, KeyType::DoubleVertical,
                            KeyType::DoubleHorizontal, KeyType::Quadruple})
        texts[std::string(1, type)] = Utf8FromText(KeyTypeText(english, type));
    return texts;
}

}  // namespace

std::string ReportData(const FleetReport& report, const ReportHeading& heading)
{
    Json object;
    object["made"] = ZonedTimeText(heading.made);
    object["compared"] = !heading.standard.empty();
    object["modules"] = ListOf(report.Modules());
    object["setups"] = ListOf(report.Setups());
    object["lines"] = report.PictureLines();
    object["pictures"] = report.Pictures();
    object["keyTypes"] = KeyTypeTexts();
    object["texts"] = report.Deviations();
    object["lists"] = report.DeviationLists();
    object["tills"] = ListOf(report.Tills());
    const std::string plain = JsonText(object);
    std::string text;
    text.reserve(plain.size());
    // A browser looks for the end of the element, and for comments, before it knows the text as JSON.
    for (const char c : plain)
        c == '<' ? text.append("\\u003c") : text.append(1, c);
    return text;
}

}  // namespace kelvora
