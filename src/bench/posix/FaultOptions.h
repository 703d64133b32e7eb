// What goes wrong on a line, as the command line of kelvora-bench says it.
#pragma once

#include "bench/LineFaults.h"

namespace CLI {
class App;
}

namespace kelvora::bench {

/// Gives `app` the options of faults; what is parsed goes to `faults`.
void AddFaultOptions(CLI::App& app, FaultPlan& faults);

/// Throws CLI::ValidationError when what was parsed does not go together.
void CheckFaults(const FaultPlan& faults);

}  // namespace kelvora::bench
