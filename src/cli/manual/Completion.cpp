#include "cli/manual/Completion.h"

#include <algorithm>

namespace kelvora::manual {

std::string FunctionName(const CommandText& program)
{
    std::string name = program.path;
    std::ranges::replace_if(
        name, [](char c) { return c == ' ' || c == '-'; }, '_');
    return name;
}

std::string PathBelow(const CommandText& command)
{
    const std::size_t blank = command.path.find(' ');
    return blank == std::string::npos ? std::string() : command.path.substr(blank + 1);
}

bool UsesLines(const CommandText& program)
{
    return std::ranges::any_of(WithAllBelow(program), [](const CommandText* command) {
        return std::ranges::find(command->options, ValueKind::Line, &OptionText::kind) !=
               command->options.end();
    });
}

std::vector<const CommandText*> WithAllBelow(const CommandText& command)
{
    std::vector<const CommandText*> all{&command};
    for (const CommandText& below : command.commands) {
        const auto nested = WithAllBelow(below);
        all.insert(all.end(), nested.begin(), nested.end());
    }
    return all;
}

}  // namespace kelvora::manual
