// The system as the simulated programs meet it. The linker puts what stands in SystemCalls.cpp in the place
// of the system's own calls (--wrap, see CMakeLists.txt), for paths under /sim and for clocks and chance: so
// the program's own code for files and locks runs as it is, on a disk that can fail and lose its power.
#pragma once

#include <chrono>
#include <functional>

#include "simulation/Disk.h"

namespace kelvora::simulation {

struct SimulatedSystem {
    Disk& disk;
    std::function<std::chrono::system_clock::time_point()> now;
    std::function<unsigned()> chance;
};

/// From now on calls go there; null ends it. Calls have no other way to know whom they are for.
void AnswerCalls(SimulatedSystem* system);

}  // namespace kelvora::simulation
