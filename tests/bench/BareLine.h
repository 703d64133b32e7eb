// A simulated line with a port, on virtual time.
#pragma once

#include <string>
#include <utility>

#include "bench/FreshLine.h"
#include "bench/SimulatedPort.h"
#include "fakes/FakeLineClock.h"

namespace kelvora::bench {

struct BareLine {
    explicit BareLine(LineState memory = FreshLine({Module::KM096, Module::MCR123}),
                      const LineOptions& options = {})
        : line(clock, std::move(memory), options), port(line)
    {
        port.Open();
    }

    /// Sends and returns what has come back after 400 ms.
    std::string Ask(std::string_view bytes)
    {
        port.Write(bytes);
        loop.Pass(std::chrono::milliseconds(400));
        return port.Read(0);
    }

    FakeEventLoop loop;
    FakeLineClock clock{loop};
    SimulatedLine line;
    SimulatedPort port;
};

}  // namespace kelvora::bench
