#include "series/SeriesEvent.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <string_view>

#include "journal/JournalText.h"
#include "platform/JsonText.h"
#include "platform/PortName.h"

namespace kelvora {

namespace {

using Json = nlohmann::ordered_json;
using Kind = SeriesEvent::Kind;

constexpr std::array KindNames{"waiting", "noPort", "found", "progress", "result", "gone", "warning", "end"};
static_assert(KindNames.size() == static_cast<std::size_t>(Kind::Last) + 1);

constexpr int LastLine = 4;

Json ObjectOf(const SeriesEvent& event)
{
    Json object;
    object["event"] = KindNames.at(static_cast<std::size_t>(event.kind));
    object["port"] = PortName(event.line);
    return object;
}

void AddResult(Json& object, const SeriesEvent& event)
{
    object.update(Json::parse(JournalLine(event.entry)));
    object["changes"] = event.changes;
}

std::string TextOf(const Json& object, const char* name)
{
    const auto found = object.find(name);
    return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

int NumberOf(const Json& object, const char* name)
{
    const auto found = object.find(name);
    return found != object.end() && found->is_number_integer() ? found->get<int>() : 0;
}

int LineOf(const Json& object)
{
    const std::string port = TextOf(object, "port");
    for (int line = 1; line <= LastLine; ++line)
        if (port == PortName(line))
            return line;
    return 0;
}

bool ReadResult(const std::string& line, const Json& object, SeriesEvent& event)
{
    const auto entry = ReadJournalLine(line);
    if (!entry)
        return false;
    event.entry = *entry;
    event.terminal = entry->terminal;
    for (const Json& change : object.value("changes", Json::array()))
        if (change.is_string())
            event.changes.push_back(change.get<std::string>());
    return true;
}

}  // namespace

std::string SeriesLine(const SeriesEvent& event)
{
    Json object = ObjectOf(event);
    switch (event.kind) {
        case Kind::Found:
            object["terminal"] = event.terminal;
            break;
        case Kind::Progress:
            object["done"] = event.done;
            object["total"] = event.total;
            break;
        case Kind::Result:
            AddResult(object, event);
            break;
        case Kind::NoPort:
        case Kind::Warning:
            object["message"] = event.message;
            break;
        case Kind::End:
            object["done"] = event.counts.done;
            object["same"] = event.counts.same;
            object["failed"] = event.counts.failed;
            object["stopped"] = event.counts.stopped;
            break;
        case Kind::Waiting:
        case Kind::Gone:
            break;
    }
    return JsonText(object) + "\n";
}

bool ReadSeriesLine(const std::string& line, SeriesEvent& event)
{
    const Json object = Json::parse(line, nullptr, false);
    if (!object.is_object())
        return false;
    const std::string name = TextOf(object, "event");
    const auto* const kind = std::ranges::find(KindNames, std::string_view(name));
    SeriesEvent read;
    read.line = LineOf(object);
    if (kind == KindNames.end() || read.line == 0)
        return false;
    read.kind = static_cast<Kind>(kind - KindNames.begin());
    read.terminal = TextOf(object, "terminal");
    if (read.kind == Kind::Result) {
        if (!ReadResult(line, object, read))
            return false;
    } else if (read.kind == Kind::End) {
        read.counts = {NumberOf(object, "done"), NumberOf(object, "same"), NumberOf(object, "failed"),
                       NumberOf(object, "stopped")};
    } else {
        read.message = TextOf(object, "message");
        read.done = static_cast<std::size_t>(std::max(0, NumberOf(object, "done")));
        read.total = static_cast<std::size_t>(std::max(0, NumberOf(object, "total")));
    }
    event = read;
    return true;
}

}  // namespace kelvora
