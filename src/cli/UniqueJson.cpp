#include "cli/UniqueJson.h"

#include <cstddef>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

namespace kelvora {

namespace {

using PlainJson = nlohmann::json;

// Follows the parser through the text.
class MemberWatch {
public:
    bool See(PlainJson::parse_event_t event, const PlainJson& parsed)
    {
        switch (event) {
            case PlainJson::parse_event_t::key:
                TakeName(parsed.get_ref<const std::string&>());
                break;
            case PlainJson::parse_event_t::object_start:
            case PlainJson::parse_event_t::array_start:
                Begin(event == PlainJson::parse_event_t::array_start);
                break;
            case PlainJson::parse_event_t::object_end:
            case PlainJson::parse_event_t::array_end:
                levels_.pop_back();
                break;
            case PlainJson::parse_event_t::value:
                Count();
                break;
        }
        return true;
    }

private:
    struct Level {
        bool isArray = false;
        std::size_t count = 0;  ///< of values so far, in an array
        std::string name{};     ///< of the member that is read, in an object
        std::set<std::string> names{};
    };

    void Count()
    {
        if (!levels_.empty())
            ++levels_.back().count;
    }
    void Begin(bool isArray)
    {
        Count();
        levels_.push_back({isArray});
    }
    void TakeName(const std::string& name)
    {
        Level& level = levels_.back();
        level.name = name;
        if (level.names.insert(name).second)
            return;
        PlainJson::json_pointer pointer;
        for (const Level& each : levels_)
            pointer.push_back(each.isArray ? std::to_string(each.count - 1) : each.name);
        throw JsonError(pointer.to_string(), "expected this member once");
    }

    std::vector<Level> levels_;
};

}  // namespace

nlohmann::json ParseUniqueJson(std::string_view text)
{
    MemberWatch watch;
    try {
        return PlainJson::parse(text, [&](int /*depth*/, PlainJson::parse_event_t event, PlainJson& parsed) {
            return watch.See(event, parsed);
        });
    } catch (const PlainJson::parse_error& error) {
        // Without the library's own number of it.
        const std::string told = error.what();
        throw JsonError({}, told.substr(told.find("] ") + 2));
    }
}

}  // namespace kelvora
