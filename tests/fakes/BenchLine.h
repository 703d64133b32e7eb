// A simulated line behind COM1, on virtual time, with the program's own link over it.
#pragma once

#include <string>
#include <vector>

#include "bench/FreshLine.h"
#include "bench/SimulatedLine.h"
#include "bench/SimulatedPort.h"
#include "comms/Comms.h"
#include "comms/SerialLink.h"
#include "fakes/FakeEventLoop.h"
#include "fakes/FakeLineClock.h"

namespace kelvora {

struct BenchLine {
    explicit BenchLine(FakeEventLoop& eventLoop, const bench::LineOptions& options = {},
                       const std::vector<bench::Module>& modules = AllModules())
        : loop(eventLoop),
          clock(loop),
          line(clock, bench::FreshLine(modules), options),
          port(line),
          link(port, loop)
    {
    }

    static std::vector<bench::Module> AllModules()
    {
        using enum bench::Module;
        return {KM096, KM064, MCR123, ICCR};
    }

    /// The device's flash, as text.
    std::string Flash() const { return {line.Memory().flash.begin(), line.Memory().flash.end()}; }

    FakeEventLoop& loop;
    bench::FakeLineClock clock;
    bench::SimulatedLine line;
    bench::SimulatedPort port;
    SerialLink link;
};

}  // namespace kelvora
