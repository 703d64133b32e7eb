#include "bench/CommandFaults.h"

#include <utility>

#include "bench/TerminalCommands.h"

namespace kelvora::bench {

namespace {

constexpr char Alone = '.';
constexpr char WithMore = '+';

std::string_view WithoutMark(std::string_view name)
{
    if (name.ends_with(Alone) || name.ends_with(WithMore))
        name.remove_suffix(1);
    return name;
}

bool Fits(std::string_view name, std::string_view command)
{
    const std::string_view begin = WithoutMark(name);
    if (!command.starts_with(begin))
        return false;
    const bool hasMore = command.size() > begin.size();
    return name == begin || hasMore == name.ends_with(WithMore);
}

}  // namespace

bool IsCommandName(std::string_view name)
{
    return TerminalCommands::Knows(WithoutMark(name));
}

CommandFaults::CommandFaults(std::vector<CommandFault> faults)
{
    for (CommandFault& fault : faults)
        faults_.push_back({std::move(fault)});
}

const CommandFault* CommandFaults::Take(CommandFault::Kind kind, std::string_view command)
{
    const CommandFault* taken = nullptr;
    for (auto& [fault, count] : faults_) {
        if (fault.kind != kind || !Fits(fault.command, command))
            continue;
        ++count;
        const bool isDue = fault.number == 0 || fault.number == count;
        if (isDue && (taken == nullptr || fault.command.size() > taken->command.size()))
            taken = &fault;
    }
    return taken;
}

}  // namespace kelvora::bench
