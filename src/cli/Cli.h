// The command line: which commands there are, and what becomes of their arguments.
#pragma once

#include <istream>
#include <ostream>
#include <span>
#include <string>

namespace CLI {
class App;
}

namespace kelvora {

struct Console;
class LineAccess;

/// Runs one command. `arguments` come without the program's name, `access` is the way to the devices. Returns
/// the exit code, see cli/Console.h.
int RunCli(std::span<const std::string> arguments, std::istream& in, std::ostream& out, std::ostream& err,
           LineAccess& access);

/// Gives `app`, which is fresh, the program's name, texts and commands. A command that is parsed sets
/// `exitCode`; all that is handed over outlives `app`.
void AddCli(CLI::App& app, Console& console, LineAccess& access, int& exitCode);

}  // namespace kelvora
