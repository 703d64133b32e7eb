#include <string_view>

#include "cli/manual/Completion.h"
#include "cli/manual/ValueKinds.h"
#include "platform/Joined.h"

namespace kelvora::manual {

namespace {

// What the value may be, as the variables that the end of the script looks at.
std::string ValueSteps(const OptionText& option)
{
    switch (option.kind) {
        case ValueKind::Unknown:
            return "kind=unknown";
        case ValueKind::AnyFile:
            return "kind=path";
        case ValueKind::Folder:
            return "kind=path endings=-d";
        case ValueKind::Line:
            return "kind=line";
        case ValueKind::Choice:
            return "kind=word offered='" + Joined(option.choices, " ") + "'";
        case ValueKind::SetupFile:
        case ValueKind::DumpFile:
        case ValueKind::PictureFile:
        case ValueKind::PageFile:
            break;
    }
    return "kind=path endings='@(" + Joined(FileEndings(option.kind), "|") + ")'";
}

// The branch of a command: what its options, its commands and its arguments may be.
std::string Branch(const CommandText& command)
{
    constexpr std::string_view Indent = "            ";
    std::vector<std::string> names;
    std::string values;
    for (const OptionText& option : command.options) {
        names.insert(names.end(), option.names.begin(), option.names.end());
        if (!option.value.empty())
            values.append(Indent).append("    ").append(Joined(option.names, " | ")) +=
                ") " + ValueSteps(option) + " ;;\n";
    }
    std::string text = "        '" + PathBelow(command) + "')\n";
    text.append(Indent) += "options='" + Joined(names, " ") + "'\n";
    if (!command.commands.empty()) {
        std::vector<std::string> below;
        for (const CommandText& child : command.commands)
            below.push_back(child.Name());
        text.append(Indent) += "kind=word offered='" + Joined(below, " ") + "'\n";
    } else if (!command.arguments.empty()) {
        text.append(Indent) += ValueSteps(command.arguments.front()) + "\n";
    }
    if (!values.empty())
        text.append(Indent).append("case $prev in\n").append(values).append(Indent).append("esac\n");
    return text.append(Indent).append(";;\n");
}

// A value is told from an argument by what stands before it: the branches say so by setting `kind` anew.
constexpr std::string_view Ending = R"sh(
    [[ $cur != -* ]] || kind=word offered=$options
    case $kind in
        word) mapfile -t COMPREPLY < <(compgen -W "$offered" -- "$cur") ;;
        path) _filedir ${endings:+"$endings"} ;;
)sh";

// readline takes "=" for the beginning of a word, so only what comes after it is given back.
constexpr std::string_view LineCase = R"sh(        line)
            if [[ $cur == [1-4]=* ]]; then
                mapfile -t COMPREPLY < <(compgen -W "$(DEVICES)" -- "${cur#*=}")
            else
                mapfile -t COMPREPLY < <(compgen -W '1= 2= 3= 4=' -- "$cur")
                compopt -o nospace
            fi
            ;;
)sh";

std::string LineSteps()
{
    std::string devices;
    for (const std::string& pattern : SerialDevicePatterns())
        devices += (devices.empty() ? "" : "; ") + ("compgen -G '" + pattern + "'");
    std::string text(LineCase);
    constexpr std::string_view Place = "DEVICES";
    return text.replace(text.find(Place), Place.size(), devices);
}

// The words before the cursor that name a command are its path.
std::string PathSteps(const std::vector<const CommandText*>& commands)
{
    std::string known;
    for (const CommandText* const command : commands)
        if (const std::string path = PathBelow(*command); !path.empty())
            known += (known.empty() ? "'" : " | '") + path + "'";
    if (known.empty())
        return {};
    return "    for word in \"${words[@]:1:cword-1}\"; do\n"
           "        case \"${command:+$command }$word\" in\n"
           "            " +
           known +
           ") command=\"${command:+$command }$word\" ;;\n"
           "        esac\n"
           "    done\n";
}

}  // namespace

std::string BashCompletion(const CommandText& program)
{
    const auto commands = WithAllBelow(program);
    const std::string function = "_" + FunctionName(program);
    std::string text = "# Completes the command line of " + program.path +
                       " in bash.\n"
                       "# shellcheck shell=bash disable=SC2034,SC2154\n" +
                       function +
                       "()\n{\n"
                       "    local cur prev words cword split\n"
                       "    _init_completion -s -n : || return\n\n"
                       "    local command='' word options='' kind='' offered='' endings=''\n" +
                       PathSteps(commands) + "    case $command in\n";
    for (const CommandText* const command : commands)
        text += Branch(*command);
    text.append("    esac\n").append(Ending);
    if (UsesLines(program))
        text += LineSteps();
    return text + "    esac\n} &&\n    complete -F " + function + " " + program.path + "\n";
}

}  // namespace kelvora::manual
