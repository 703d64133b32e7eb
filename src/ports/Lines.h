// The lines COM1 to COM4 of the windows: the port of each, the terminal link over it, and whether a
// simulation answers there.
#pragma once

#include <array>
#include <memory>
#include <string>

#include "comms/Comms.h"
#include "comms/LineLink.h"
#include "platform/EventLoop.h"
#include "platform/SerialPort.h"

namespace kelvora {

class Lines {
public:
    /// The serial ports behind COM1 to COM4; null where there is none. All outlive the object.
    using Ports = std::array<SerialPort*, LineCount>;

    Lines(const Ports& ports, EventLoop& eventLoop);

    const Ports& AllPorts() const { return ports_; }

    /// The port of a line, 1 to 4; null where there is none.
    SerialPort* Port(int line) const;

    /// The terminal links, and the layer above them. A link is null where there is no port.
    const std::array<std::unique_ptr<LineLink>, LineCount>& Links() const { return links_; }
    Comms& Terminals() { return comms_; }

    /// The devices can be reached: there is a terminal link. What talks to them is disabled without it.
    bool HasLink() const;

    /// Whether the port of a line can be used: it is open already, or can be opened. A line on the network is
    /// there when it is named: connecting would take too long to find out.
    bool IsAvailable(int line) const;

    /// Whether a simulation of this program answers on a line, 1 to 4.
    bool IsSimulated(int line) const;

    /// Whether one answers on any line.
    bool HasSimulation() const;

    /// Puts a simulation behind a line that has a port, and takes all simulations away: what stands behind
    /// the ports then is the caller's to say.
    void Simulate(int line, const std::string& device);
    void EndSimulation() { simulated_ = {}; }

private:
    Ports ports_;
    std::array<bool, LineCount> simulated_{};
    std::array<std::unique_ptr<LineLink>, LineCount> links_;
    Comms comms_;
};

}  // namespace kelvora
