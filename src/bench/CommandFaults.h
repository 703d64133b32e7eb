// What goes wrong with the answers to commands of the terminal that are picked by name:
//
//   $9904      every command that begins so: "$9904", "$9904!0", "$9904!3"
//   0FB3.      that command with nothing behind it
//   0FB3+      that command with something behind it
//   $9902#2    of those, the second alone
//
// Of several names that fit the longest decides.
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace kelvora::bench {

struct CommandFault {
    enum class Kind {
        Late,        ///< the answer begins later; a repeated answer too, and counts
        WrongReply,  ///< the reply of another command comes; a repeated answer too, and counts
        Silent,      ///< the command is not heard, and from then on nothing passes in either direction
        Status,      ///< the command is not run but replied to with a status
    };

    Kind kind;
    std::string command;  ///< a name as above, without the number
    unsigned number = 0;  ///< which of those that the name fits, from 1 on; 0 for each
    std::chrono::milliseconds late{0};
    std::string status{};
};

/// Whether `name` is one that a fault can have: a command that the terminal knows, and maybe what may stand
/// behind it.
bool IsCommandName(std::string_view name);

class CommandFaults {
public:
    explicit CommandFaults(std::vector<CommandFault> faults);

    /// Counts a command that is about to be run or answered; what is then to happen to it in that way, or
    /// null. It lives as long as this.
    const CommandFault* Take(CommandFault::Kind kind, std::string_view command);

private:
    struct Counted {
        CommandFault fault;
        unsigned count = 0;
    };
    std::vector<Counted> faults_;
};

}  // namespace kelvora::bench
