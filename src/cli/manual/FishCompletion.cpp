#include <string_view>

#include "cli/manual/Completion.h"
#include "cli/manual/ValueKinds.h"
#include "platform/Joined.h"

namespace kelvora::manual {

namespace {

std::string Quoted(std::string_view text)
{
    std::string quoted("'");
    for (const char c : text) {
        if (c == '\'' || c == '\\')
            quoted += '\\';
        quoted += c;
    }
    return quoted + "'";
}

// What comes behind the names of an option, or stands for an argument.
std::string ValueSwitches(const OptionText& option)
{
    switch (option.kind) {
        case ValueKind::Unknown:
            return " -f";
        case ValueKind::AnyFile:
            return " -F";
        case ValueKind::Folder:
            return " -f -a '(__fish_complete_directories (commandline -ct))'";
        case ValueKind::Line:
            return " -f -a '(__kelvora_lines)'";
        case ValueKind::Choice:
            return " -f -a " + Quoted(Joined(option.choices, " "));
        case ValueKind::SetupFile:
        case ValueKind::DumpFile:
        case ValueKind::PictureFile:
        case ValueKind::PageFile:
            break;
    }
    return " -f -a " + Quoted("(__kelvora_files " + Quoted(Joined(FileEndings(option.kind), "|")) + ")");
}

std::string OptionSwitches(const OptionText& option)
{
    std::string text;
    for (const std::string& name : option.names)
        text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    if (!option.value.empty())
        text += " -r" + ValueSwitches(option);
    return text + " -d " + Quoted(option.help);
}

std::string Lines(const CommandText& program, const CommandText& command)
{
    const std::string begin = "complete -c " + program.path + " -n " +
                              Quoted("__" + FunctionName(program) + "_at " + Quoted(PathBelow(command)));
    std::string text;
    for (const OptionText& option : command.options)
        text += begin + OptionSwitches(option) + "\n";
    for (const CommandText& below : command.commands)
        text += begin + " -a " + below.Name() + " -d " + Quoted(below.summary) + "\n";
    if (!command.arguments.empty() && command.arguments.front().kind != ValueKind::Unknown)
        text += begin + ValueSwitches(command.arguments.front()) + "\n";
    return text;
}

// Whether the words before the cursor name just that command.
std::string PathFunction(const CommandText& program)
{
    std::string known;
    for (const CommandText* const command : WithAllBelow(program))
        if (const std::string path = PathBelow(*command); !path.empty())
            known += " " + Quoted(path);
    return "function __" + FunctionName(program) +
           "_at\n"
           "    set -l command\n"
           "    set -l words (commandline -opc)\n"
           "    for word in $words[2..]\n"
           "        set -l longer (string trim -- \"$command $word\")\n"
           "        contains -- \"$longer\"" +
           known +
           "; and set command $longer\n"
           "    end\n"
           "    test \"$command\" = \"$argv\"\n"
           "end\n\n";
}

// What the values of all programs are made of; each program brings it along.
std::string CommonFunctions()
{
    return "function __kelvora_lines\n"
           "    for device in " +
           Joined(SerialDevicePatterns(), " ") +
           "\n"
           "        for line in 1 2 3 4\n"
           "            echo $line=$device\n"
           "        end\n"
           "    end\n"
           "end\n\n"
           "function __kelvora_files\n"
           "    set -l token (commandline -ct | string replace -r '^(--[^=]+=|-[a-z])' '')\n"
           // A command without completions of its own: fish then offers files, and knows "~", blanks and
           // quotes.
           "    set -l all (complete -C \"__kelvora_none $token\" | string replace -r '\\t.*' '')\n"
           "    string match -ri -- '^.*(?:/|\\.(?:'$argv'))$' $all\n"
           "    or printf '%s\\n' $all\n"
           "end\n\n";
}

}  // namespace

std::string FishCompletion(const CommandText& program)
{
    std::string text = "# Completes the command line of " + program.path + " in fish.\n\n" +
                       CommonFunctions() + PathFunction(program) + "complete -c " + program.path + " -f\n";
    for (const CommandText* const command : WithAllBelow(program))
        text += Lines(program, *command);
    return text;
}

}  // namespace kelvora::manual
