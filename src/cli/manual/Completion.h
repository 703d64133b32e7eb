// Scripts by which a shell completes a program's command line: its commands, options and values, files by
// their kind and the machine's serial devices.
#pragma once

#include <string>
#include <vector>

#include "cli/manual/CommandText.h"

namespace kelvora::manual {

/// For bash; what loads it is the package bash-completion, whose functions it uses.
std::string BashCompletion(const CommandText& program);

/// For zsh's completion system; the file's name is "_" and the program's.
std::string ZshCompletion(const CommandText& program);

/// For fish 3.4 or newer.
std::string FishCompletion(const CommandText& program);

/// The program's name as one of a shell function: "kelvora_cli".
std::string FunctionName(const CommandText& program);

/// The command's path below the program, as typed: "identity read"; empty for the program itself.
std::string PathBelow(const CommandText& command);

/// Whether an option of it, or of a command below it, takes a line.
bool UsesLines(const CommandText& program);

/// `command`, then all below it, parents first.
std::vector<const CommandText*> WithAllBelow(const CommandText& command);

}  // namespace kelvora::manual
