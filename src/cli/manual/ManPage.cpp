#include "cli/manual/ManPage.h"

#include <algorithm>
#include <vector>

#include "platform/AsciiCase.h"

namespace kelvora::manual {

namespace {

// A line of text as roff shows it as it stands: a backslash, a dash that can be copied into a shell, and a
// dot or a quote that begins no macro.
std::string Roff(std::string_view text)
{
    std::string shown;
    for (const char c : text) {
        if (c == '\\')
            shown += "\\e";
        else if (c == '-')
            shown += "\\-";
        else if (c == '\n')
            shown += ' ';
        else
            shown += c;
    }
    return shown.starts_with('.') || shown.starts_with('\'') ? "\\&" + shown : shown;
}

std::string Bold(std::string_view text)
{
    return "\\fB" + Roff(text) + "\\fP";
}

std::string Italic(std::string_view text)
{
    return "\\fI" + Roff(text) + "\\fP";
}

std::string ArgumentSynopsis(const OptionText& argument)
{
    const std::string name = Italic(argument.value) + (argument.isRepeated ? " ..." : "");
    return argument.isRequired ? name : "[" + name + "]";
}

// A line that ends in dots ends no sentence, after which roff would leave more room.
std::string Synopsis(const CommandText& command)
{
    std::string text = Bold(command.path) + "\n[" + Italic("OPTION") + " ...]\\&\n";
    for (const OptionText& argument : command.arguments)
        text += ArgumentSynopsis(argument) + "\\&\n";
    return command.commands.empty() ? text : text + Italic("COMMAND") + " ...\n";
}

std::string Item(const std::string& head, const std::string& text)
{
    return ".TP\n" + head + "\n" + text + ".\n";
}

// Whether the help names them all, or the first and the last of a range.
bool TellsChoices(const OptionText& option)
{
    const auto told = [&](const std::string& text) { return option.help.find(text) != std::string::npos; };
    return std::ranges::all_of(option.choices, told) ||
           told(option.choices.front() + " to " + option.choices.back());
}

std::string OptionItem(const OptionText& option)
{
    std::string head;
    for (const std::string& name : option.names)
        head += (head.empty() ? "" : ", ") + Bold(name);
    if (!option.value.empty())
        head += (head.empty() ? "" : " ") + Italic(option.value);
    std::string text = Roff(option.help);
    if (option.kind == ValueKind::Choice && !TellsChoices(option)) {
        std::string all;
        for (const std::string& choice : option.choices)
            all += (all.empty() ? "" : ", ") + Roff(choice);
        text += ": " + all;
    }
    if (!option.names.empty() && option.isRepeated)
        text += ".\nMay be given more than once";
    return Item(head, text);
}

std::string List(std::string_view title, const std::vector<OptionText>& options)
{
    if (options.empty())
        return {};
    std::string text = ".SH " + std::string(title) + "\n";
    for (const OptionText& option : options)
        text += OptionItem(option);
    return text;
}

std::string Lists(const CommandText& command)
{
    std::string text = List("ARGUMENTS", command.arguments) + List("OPTIONS", command.options);
    if (!command.commands.empty())
        text += ".SH COMMANDS\n";
    for (const CommandText& below : command.commands)
        text += Item(Bold(below.Name()), Roff(below.summary) + "; see " + Bold(PageName(below)) + "(1)");
    return text;
}

std::string Head(const CommandText& command, const PageTexts& texts)
{
    std::string title = PageName(command);
    std::ranges::transform(title, title.begin(), AsciiUpper);
    std::string summary = command.summary;
    if (!summary.empty())
        summary.front() = AsciiLower(summary.front());
    return ".TH \"" + title + "\" 1 \"" + texts.date + "\" \"Kelvora " + texts.version +
           "\" \"Kelvora\"\n.SH NAME\n" + PageName(command) + " \\- " + Roff(summary) + "\n.SH SYNOPSIS\n" +
           Synopsis(command);
}

}  // namespace

std::string ManPage(const CommandText& command, const PageTexts& texts)
{
    std::string page = Head(command, texts);
    const std::size_t marker = texts.body.find(ListsMarker);
    page += texts.body.substr(0, marker);
    page += Lists(command);
    if (marker != std::string::npos)
        page += texts.body.substr(marker + ListsMarker.size());
    return texts.body.find(".SH EXIT STATUS") == std::string::npos ? page + texts.end : page;
}

std::string PageName(const CommandText& command)
{
    std::string name = command.path;
    std::ranges::replace(name, ' ', '-');
    return name;
}

}  // namespace kelvora::manual
