#include "cli/manual/CommandText.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "cli/manual/ValueKinds.h"
#include "platform/NumberText.h"
#include "ports/StartOptions.h"

namespace kelvora::manual {

namespace {

/// As many values as are still offered one by one.
constexpr int MostOffered = 10;

struct Limits {
    std::string least, most;
};

// Of "INT in [1 - 4]".
std::optional<Limits> LimitsIn(std::string_view type)
{
    constexpr std::string_view Begin = " in [";
    constexpr std::string_view Between = " - ";
    const std::size_t begin = type.find(Begin);
    const std::size_t between = type.find(Between, begin);
    if (begin == std::string_view::npos || between == std::string_view::npos)
        return std::nullopt;
    const std::size_t least = begin + Begin.size();
    const std::size_t most = between + Between.size();
    return Limits{std::string(type.substr(least, between - least)),
                  std::string(type.substr(most, type.find(']', most) - most))};
}

std::vector<std::string> FewNumbers(const Limits& limits)
{
    std::vector<std::string> numbers;
    const auto least = WholeNumber<int>(limits.least);
    const auto most = WholeNumber<int>(limits.most);
    if (least && most && *most - *least < MostOffered)
        for (int number = *least; number <= *most; ++number)
            numbers.push_back(std::to_string(number));
    return numbers;
}

// Of "INT:{1200,2400}".
std::vector<std::string> SetIn(std::string_view type)
{
    const std::size_t begin = type.find('{');
    if (begin == std::string_view::npos)
        return {};
    return CLI::detail::split(std::string(type.substr(begin + 1, type.find('}', begin) - begin - 1)), ',');
}

// The parser keeps what a value may be only as a text behind its type.
void TakeValue(OptionText& option, const std::string& type)
{
    option.value = type.substr(0, type.find(':'));
    option.choices = SetIn(type);
    if (const auto limits = LimitsIn(type)) {
        const std::string told = limits->least + " to " + limits->most;
        if (option.help.find(told) == std::string::npos)
            option.help += " (" + told + ")";
        if (option.choices.empty() && option.value != "FLOAT")
            option.choices = FewNumbers(*limits);
    }
}

OptionText DescribeOption(const CLI::Option& parsed)
{
    OptionText option;
    for (const std::string& name : parsed.get_snames())
        option.names.push_back("-" + name);
    for (const std::string& name : parsed.get_lnames())
        option.names.push_back("--" + name);
    option.help = parsed.get_description();
    option.isRequired = parsed.get_required();
    option.isRepeated = parsed.get_items_expected_max() > 1;
    if (parsed.get_positional())
        option.value = parsed.get_name(true);
    else if (parsed.get_type_size() != 0)
        TakeValue(option, parsed.get_type_name());
    return option;
}

CommandText DescribeBelow(const CLI::App& app, const std::string& parent)
{
    CommandText command{parent + app.get_name(), app.get_description()};
    command.summary.resize(std::min(command.summary.find_first_of(".\n"), command.summary.size()));
    for (const CLI::Option* const parsed : app.get_options()) {
        if (parsed->get_group().empty())
            continue;
        OptionText option = DescribeOption(*parsed);
        option.kind = KindOf(command.path, option);
        (option.names.empty() ? command.arguments : command.options).push_back(std::move(option));
    }
    for (const CLI::App* const below : app.get_subcommands([](const CLI::App* /*below*/) { return true; }))
        command.commands.push_back(DescribeBelow(*below, command.path + " "));
    return command;
}

}  // namespace

std::string CommandText::Name() const
{
    return path.substr(path.rfind(' ') + 1);
}

CommandText Describe(const CLI::App& app)
{
    return DescribeBelow(app, {});
}

CommandText DescribeWindows()
{
    CommandText windows{"kelvora", std::string(StartSummary)};
    windows.options = {{{"-h", "--help"}, {}, "Show this help and exit"},
                       {{"--help-all"}, {}, "Show this help and the options of the window system, and exit"},
                       {{"-v", "--version"}, {}, "Show the version and exit"}};
    for (const StartOption& option : StartOptions::All) {
        windows.options.push_back(
            {{"--" + std::string(option.name)}, std::string(option.value), std::string(option.help)});
        windows.options.back().isRepeated = option.name == StartOptions::Line.name;
    }
    windows.arguments = {{{}, "FILE", std::string(StartFilesHelp)}};
    windows.arguments.front().isRepeated = true;
    for (auto* const texts : {&windows.options, &windows.arguments})
        for (OptionText& text : *texts)
            text.kind = KindOf(windows.path, text);
    return windows;
}

}  // namespace kelvora::manual
