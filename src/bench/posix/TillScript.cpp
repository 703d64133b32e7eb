#include "bench/posix/TillScript.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>
#include <utility>

#include "bench/posix/FaultOptions.h"

namespace kelvora::bench {

namespace {

constexpr std::size_t LongestName = 223;
constexpr double LongestSeconds = 1e6;

Till ParseTill(const std::string& options, std::uint64_t seed)
{
    Till till;
    till.faults.seed = seed;
    CLI::App app;
    app.set_help_flag();
    app.add_option_function<std::string>(
        "--modules", [&till](const std::string& list) { till.modules = ParseModules(list); });
    app.add_option_function<std::string>(
        "--name", [&till](const std::string& name) { till.name = ParseTerminalName(name); });
    app.add_option("--state", till.statePath);
    AddFaultOptions(app, till.faults);
    app.parse(options);
    CheckFaults(till.faults);
    return till;
}

void ParseTime(std::string text, TillEvent& event)
{
    constexpr std::string_view Idle = "idle+";
    if (text.starts_with(Idle)) {
        event.from = TillEvent::From::LastCommand;
        text.erase(0, Idle.size());
    } else if (text.starts_with('+')) {
        event.from = TillEvent::From::EventBefore;
        text.erase(0, 1);
    }
    double seconds = 0;
    if (!CLI::detail::lexical_cast(text, seconds) || !(seconds >= 0 && seconds <= LongestSeconds))
        throw TillScriptError("a number of seconds expected in front, such as 12.5, +2 or idle+2");
    event.time = std::chrono::round<std::chrono::milliseconds>(std::chrono::duration<double>(seconds));
}

void ParseEvent(const std::string& text, std::uint64_t seed, TillScript& script)
{
    std::istringstream words(text);
    std::string time;
    std::string number;
    std::string what;
    words >> time >> number >> what;
    TillEvent event;
    ParseTime(time, event);
    std::size_t line = 0;
    if (!CLI::detail::lexical_cast(number, line) || line < 1 || line > MostLines)
        throw TillScriptError("the number of a line, 1 to " + std::to_string(MostLines) +
                              ", expected after the time");
    std::string rest;
    std::getline(words, rest);
    const bool isGone = what == "gone" && rest.find_first_not_of(" \t\r") == std::string::npos;
    if (!isGone && what != "till")
        throw TillScriptError(R"("gone", or "till" and its options, expected after the line's number)");
    if (!isGone)
        event.till = ParseTill(rest, seed);
    std::vector<TillEvent>& events = script[line];
    const bool isBack =
        event.from == TillEvent::From::Start && std::ranges::any_of(events, [&](const TillEvent& before) {
            return before.from == TillEvent::From::Start && before.time > event.time;
        });
    if (isBack)
        throw TillScriptError("an earlier time than above on the same line");
    events.push_back(std::move(event));
}

}  // namespace

TillScript ParseTillScript(const std::string& text)
{
    TillScript script;
    std::istringstream lines(text);
    std::string line;
    for (std::uint64_t number = 1; std::getline(lines, line); ++number) {
        const std::size_t begin = line.find_first_not_of(" \t\r");
        if (begin == std::string::npos || line[begin] == '#')
            continue;
        try {
            ParseEvent(line, number, script);
        } catch (const std::runtime_error& error) {  // CLI11's own are such
            throw TillScriptError("line " + std::to_string(number) + ": " + error.what());
        }
    }
    return script;
}

std::vector<Module> ParseModules(const std::string& list)
{
    std::vector<Module> modules;
    std::size_t addresses = 0;
    if (list == "none")
        return modules;
    for (const std::string& name : CLI::detail::split(list, ',')) {
        const auto module = FindModule(name);
        if (!module)
            throw CLI::ValidationError("--modules", "no module is named \"" + name + "\"");
        addresses += AddressesOf(*module);
        modules.push_back(*module);
    }
    if (addresses > MostModules)
        throw CLI::ValidationError("--modules", "\"" + list + "\" takes more than seven addresses");
    return modules;
}

std::string ParseTerminalName(const std::string& name)
{
    const bool isText = std::ranges::all_of(name, [](unsigned char c) { return c >= 32; });
    if (name.empty() || name.size() > LongestName || !isText)
        throw CLI::ValidationError("--name", "a terminal's name has 1 to 223 printable characters");
    return name;
}

}  // namespace kelvora::bench
