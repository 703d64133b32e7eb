// The command line of kelvora-bench.
#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "bench/FreshLine.h"
#include "bench/SimulatedLine.h"
#include "bench/posix/TillScript.h"

namespace CLI {
class App;
}

namespace kelvora::bench {

struct BenchOptions {
    std::vector<std::vector<Module>> lines;  ///< what hangs on each of them
    std::size_t count = 0;                   ///< of the lines; 0 for as many as are named
    std::vector<std::string> names;          ///< of their terminals, as far as they are given
    std::string statePath;                   ///< of the first line; empty for none
    TillScript tills;  ///< that come later; a line that stands only there begins without
    LineOptions line;
    bool untilEof = false;
    bool tells = false;  ///< what happens at the lines, as it happens
};

/// Exit codes of the program.
inline constexpr int Done = 0;
inline constexpr int Failed = 1;
inline constexpr int WrongUsage = 2;

/// Gives `app`, which is fresh, the program's name, texts and options; what is parsed goes to `options`.
void AddBench(CLI::App& app, BenchOptions& options);

/// What the arguments ask for; nothing when the program is to end with `exitCode`: help or a complaint has
/// been shown then.
std::optional<BenchOptions> ParseBenchOptions(const std::vector<std::string>& arguments, std::ostream& out,
                                              std::ostream& err, int& exitCode);

}  // namespace kelvora::bench
