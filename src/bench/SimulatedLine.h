// A serial line with a terminal and its keyboard modules at the end, and noise on the way. What the host's
// side puts behind it is a port of this process (SimulatedPort) or a pseudo-terminal (posix/PtyLine).
// Terminal and modules are told apart by what stands between frames: SOH is for the terminal, ENQ for the
// modules. Whoever works at another speed than the host hears nothing and says nothing.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/ByteChannel.h"
#include "bench/LineFaults.h"
#include "bench/LineState.h"
#include "bench/SimulatedModules.h"
#include "bench/SimulatedTerminal.h"

namespace kelvora::bench {

struct LineOptions {
    SerialSettings terminal{};  ///< the terminal's own settings
    std::vector<ModuleLink> modules{
        ModuleLink{}};  ///< by address; those that are missing are as the last one
    FaultPlan faults{};
    bool isPaced = true;  ///< bytes take the time that the line's speed gives them
};

class SimulatedLine {
public:
    /// `clock` outlives this.
    SimulatedLine(LineClock& clock, LineState memory, const LineOptions& options = {});
    SimulatedLine(const SimulatedLine&) = delete;
    SimulatedLine& operator=(const SimulatedLine&) = delete;
    ~SimulatedLine() = default;

    /// The settings that the host's port has from now on.
    void SetHostSettings(const SerialSettings& settings) { host_ = settings; }
    /// Bytes that the host sends, at its settings of now.
    void Send(std::string_view bytes);
    /// The host has closed its port: what is on its way to it is lost.
    void HostClosed();

    /// A new plan; bytes are counted anew, and a line that was cut works again.
    void SetFaults(const FaultPlan& plan);
    const LineFaults& Faults() const { return faults_; }

    /// The devices lose their power and get it back: only the memory stays.
    void Restart();

    /// The cable to the devices is pulled: they are silent and without power.
    void TakeAway();
    /// Other devices are plugged in, in place of what is there.
    void Put(LineState memory, std::string name, const FaultPlan& faults);

    const LineState& Memory() const { return memory_; }
    SimulatedTerminal& Terminal() { return terminal_; }
    /// Whether a host has taken the terminal's devices for itself and not given them back.
    bool IsHeld() const { return terminal_.IsHeld(); }

    /// Called with bytes as they arrive at the host.
    std::function<void(std::string_view)> onBytes;
    /// Called when the port has gone away.
    std::function<void()> onAway;
    /// Called when the memory has changed.
    std::function<void()> onStored;
    /// Called in its place when the terminal's has, before the terminal answers; false when the change cannot
    /// be kept, which undoes it.
    std::function<bool()> onCommit;
    /// Called with each new command that the terminal hears, before it is run.
    std::function<void(std::string_view)> onCommand;
    /// Called when the terminal is held or released.
    std::function<void()> onHeld;

private:
    void ArriveAtDevices(const ByteRun& run);
    void ArriveAtHost(const ByteRun& run);
    void ExpectStray();
    void Hear(char byte, const SerialSettings& settings, std::chrono::microseconds quiet);

    LineState memory_;
    bool isThere_ = true;
    LineFaults faults_;
    SerialSettings host_;
    SerialSettings terminalSettings_;
    ByteChannel toDevices_;
    ByteChannel toHost_;
    SimulatedTerminal terminal_;
    SimulatedModules modules_;
    Appointment stray_;
};

}  // namespace kelvora::bench
