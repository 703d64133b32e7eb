#include <string_view>

#include "cli/manual/Completion.h"
#include "cli/manual/ValueKinds.h"
#include "platform/Joined.h"

namespace kelvora::manual {

namespace {

// In single quotes. What ends a part of an option's line is escaped where it stands inside one.
std::string ShellQuoted(std::string_view text)
{
    std::string quoted("'");
    for (const char c : text)
        if (c == '\'')
            quoted += "'\\''";
        else
            quoted += c;
    return quoted + "'";
}

std::string Escaped(std::string_view text, std::string_view special)
{
    std::string escaped;
    for (const char c : text) {
        if (special.find(c) != std::string_view::npos)
            escaped += '\\';
        escaped += c;
    }
    return escaped;
}

std::string Action(const OptionText& option)
{
    switch (option.kind) {
        case ValueKind::Unknown:
            return " ";
        case ValueKind::AnyFile:
            return "_files";
        case ValueKind::Folder:
            return "_files -/";
        case ValueKind::Line:
            return "_kelvora_line";
        case ValueKind::Choice:
            return "(" + Joined(option.choices, " ") + ")";
        case ValueKind::SetupFile:
        case ValueKind::DumpFile:
        case ValueKind::PictureFile:
        case ValueKind::PageFile:
            break;
    }
    return "_files -g \"*.(#i)(" + Joined(FileEndings(option.kind), "|") + ")(-.)\"";
}

// A value of two words has a second place, of which nothing is known.
std::string ValueEntry(const OptionText& option)
{
    const std::size_t blank = option.value.find(' ');
    const std::string second = blank == std::string::npos
                                   ? std::string()
                                   : ":" + Escaped(option.value.substr(blank + 1), ":\\") + ": ";
    return ":" + Escaped(option.value.substr(0, blank), ":\\") + ":" + Action(option) + second;
}

std::string OptionEntry(const OptionText& option)
{
    const bool hasValue = !option.value.empty();
    const std::string after =
        "[" + Escaped(option.help, "[]:\\") + "]" + (hasValue ? ValueEntry(option) : "");
    // An option that can come once is not offered again under its other name.
    const std::string before = option.isRepeated ? "*" : "(" + Joined(option.names, " ") + ")";
    std::string entries;
    for (const std::string& name : option.names) {
        std::string entry = before + name;
        if (hasValue)
            entry += name.starts_with("--") ? '=' : '+';
        entries += " \\\n        " + ShellQuoted(entry += after);
    }
    return entries;
}

std::string ArgumentEntry(const OptionText& argument)
{
    std::string_view before = argument.isRequired ? "" : ":";
    if (argument.isRepeated)
        before = "*";
    return " \\\n        " + ShellQuoted(std::string(before) + ValueEntry(argument));
}

std::string StepsBelow(const CommandText& command, const std::string& function)
{
    std::string offered;
    std::string calls;
    for (const CommandText& below : command.commands) {
        offered +=
            "                " + ShellQuoted(below.Name() + ":" + Escaped(below.summary, ":\\")) + "\n";
        calls += "                " + below.Name() + ") " + function + "_" + below.Name() + " ;;\n";
    }
    return " \\\n        ': :->command' '*:: :->arguments'\n"
           "    case $state in\n"
           "        command)\n"
           "            commands=(\n" +
           offered +
           "            )\n"
           "            _describe command commands\n"
           "            ;;\n"
           "        arguments)\n"
           "            case $words[1] in\n" +
           calls +
           "            esac\n"
           "            ;;\n"
           "    esac\n";
}

std::string Function(const CommandText& command, const std::string& name)
{
    std::string text = name + "() {\n";
    if (!command.commands.empty())
        text +=
            "    local curcontext=$curcontext state state_descr line\n    local -a commands\n    typeset -A "
            "opt_args\n";
    text += std::string("    _arguments ") + (command.commands.empty() ? "" : "-C ") + "-s -S";
    for (const OptionText& option : command.options)
        text += OptionEntry(option);
    for (const OptionText& argument : command.arguments)
        text += ArgumentEntry(argument);
    text += command.commands.empty() ? "\n" : StepsBelow(command, name);
    text += "}\n\n";
    for (const CommandText& below : command.commands)
        text += Function(below, name + "_" + below.Name());
    return text;
}

std::string LineFunction()
{
    std::string patterns;
    for (const std::string& pattern : SerialDevicePatterns())
        patterns += " " + pattern + "(N)";
    return "_kelvora_line() {\n"
           "    local -a devices=(" +
           patterns.substr(1) +
           ")\n"
           "    if compset -P '[1-4]='; then\n"
           "        compadd -a devices\n"
           "    else\n"
           "        compadd -S '' 1= 2= 3= 4=\n"
           "    fi\n"
           "}\n\n";
}

}  // namespace

std::string ZshCompletion(const CommandText& program)
{
    const std::string function = "_" + FunctionName(program);
    return "#compdef " + program.path + "\n# Completes the command line of " + program.path + " in zsh.\n\n" +
           (UsesLines(program) ? LineFunction() : std::string()) + Function(program, function) + function +
           " \"$@\"\n";
}

}  // namespace kelvora::manual
