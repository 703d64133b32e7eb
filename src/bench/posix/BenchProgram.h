// The program kelvora-bench: plays simulated lines until it is told to end.
#pragma once

#include <ostream>

#include "bench/posix/BenchOptions.h"

namespace kelvora::bench {

/// Plays the lines; prints one line for each on `out`, such as "1 /dev/pts/5", when all can be opened; then,
/// where the options ask for it, what happens, such as "1 held". Ends
/// on SIGTERM or SIGINT, which are blocked from then on, or with the standard input when the options say so.
/// Throws std::system_error or StateError when a line cannot be played.
void RunBench(const BenchOptions& options, std::ostream& out, std::ostream& err);

}  // namespace kelvora::bench
