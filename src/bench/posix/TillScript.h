// The tills of a script, as kelvora-bench reads them: an event a line.
//
//   SECONDS LINE gone            the till's cable is pulled
//   SECONDS LINE till OPTIONS    a till is plugged in, in place of what hung there
//
// SECONDS count from the start; "+2" from the event before on that line; "idle+2" from the last command that
// the till there got after it, $9900 not counted. OPTIONS are those of the command line that say what one
// till is: --modules, --state, --name and its faults. Lines that begin with "#" and empty ones mean nothing.
#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/TillChanges.h"

namespace kelvora::bench {

/// Lines that a bench can play.
inline constexpr std::size_t MostLines = 256;

/// By the number of the line, from 1 on.
using TillScript = std::map<std::size_t, std::vector<TillEvent>>;

/// A script that is not one; `what()` names the line and says what is wrong with it.
class TillScriptError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Throws TillScriptError.
TillScript ParseTillScript(const std::string& text);

/// What hangs on a line, from "km096,mcr12" or "none". Throws CLI::ValidationError.
std::vector<Module> ParseModules(const std::string& list);

/// A terminal's name as a reply can carry it. Throws CLI::ValidationError.
std::string ParseTerminalName(const std::string& name);

}  // namespace kelvora::bench
