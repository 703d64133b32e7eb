#include "bench/SimulatedLine.h"

#include <string>
#include <utility>

namespace kelvora::bench {

namespace {

/// After that much quiet nobody waits for the rest of a frame any more.
constexpr std::chrono::milliseconds StaleAfter(500);

}  // namespace

SimulatedLine::SimulatedLine(LineClock& clock, LineState memory, const LineOptions& options)
    : memory_(std::move(memory)),
      faults_(options.faults),
      terminalSettings_(options.terminal),
      toDevices_(clock, options.isPaced),
      toHost_(clock, options.isPaced),
      terminal_(clock, memory_, faults_),
      modules_(clock, memory_, faults_, options.modules),
      stray_(clock)
{
    toDevices_.onRun = [this](const ByteRun& run) { ArriveAtDevices(run); };
    toHost_.onRun = [this](const ByteRun& run) { ArriveAtHost(run); };
    terminal_.onSend = [this](const std::string& bytes) {
        toHost_.CutOff();
        toHost_.Send(faults_.Distort(Direction::ToHost, bytes), terminalSettings_, true);
    };
    modules_.onSend = [this](const std::string& bytes, const SerialSettings& settings) {
        toHost_.Send(faults_.Distort(Direction::ToHost, bytes), settings, false);
    };
    const auto stored = [this] {
        if (onStored)
            onStored();
    };
    terminal_.onStored = [this, stored] {
        if (onCommit)
            return onCommit();
        stored();
        return true;
    };
    modules_.onStored = stored;
    terminal_.onCommand = [this](std::string_view command) {
        if (onCommand)
            onCommand(command);
    };
    terminal_.onHeld = [this] {
        if (onHeld)
            onHeld();
    };
}

void SimulatedLine::Send(std::string_view bytes)
{
    toDevices_.Send(faults_.Distort(Direction::ToDevice, bytes), host_, true);
    if (!stray_.IsSet())
        ExpectStray();
}

// A host that has yet to speak, or has closed its port, hears none: they would wait for it in its buffer.
void SimulatedLine::HostClosed()
{
    toHost_.Clear();
    stray_.Cancel();
}

void SimulatedLine::SetFaults(const FaultPlan& plan)
{
    faults_ = LineFaults(plan);
    stray_.Cancel();
}

void SimulatedLine::ExpectStray()
{
    if (const auto interval = faults_.StrayInterval(); isThere_ && interval.count() > 0)
        stray_.SetAfter(interval, [this] {
            ExpectStray();
            ArriveAtHost({.bytes = {faults_.Stray()}, .settings = host_});
        });
}

void SimulatedLine::ArriveAtDevices(const ByteRun& run)
{
    if (!isThere_)
        return;
    const bool wasAway = faults_.IsAway();
    const std::size_t passing = faults_.Pass(Direction::ToDevice, run.bytes.size());
    const bool goesAway = faults_.IsAway() && !wasAway;
    if (run.quiet >= StaleAfter) {
        terminal_.Forget();
        modules_.Forget();
    }
    for (std::size_t index = 0; index < passing; ++index)
        Hear(run.bytes[index], run.settings, index == 0 ? run.quiet : std::chrono::microseconds(0));
    if (goesAway && onAway)
        onAway();
}

void SimulatedLine::Hear(char byte, const SerialSettings& settings, std::chrono::microseconds quiet)
{
    if (!modules_.InFrame() && (terminal_.InFrame() || byte == Soh)) {
        modules_.Forget();
        if (settings == terminalSettings_)
            terminal_.Hear(byte);
    } else if (modules_.Wants(byte, quiet)) {
        modules_.Hear(byte, settings);
    } else {
        modules_.Forget();
    }
}

void SimulatedLine::ArriveAtHost(const ByteRun& run)
{
    if (run.settings != host_)
        return;
    const bool wasAway = faults_.IsAway();
    const std::size_t passing = faults_.Pass(Direction::ToHost, run.bytes.size());
    const bool goesAway = faults_.IsAway() && !wasAway;
    if (passing > 0 && onBytes)
        onBytes(std::string_view(run.bytes).substr(0, passing));
    if (goesAway && onAway)
        onAway();
}

void SimulatedLine::TakeAway()
{
    Restart();
    stray_.Cancel();
    isThere_ = false;
}

void SimulatedLine::Put(LineState memory, std::string name, const FaultPlan& faults)
{
    Restart();
    SetFaults(faults);
    memory_ = std::move(memory);
    terminal_.SetName(std::move(name));
    isThere_ = true;
}

void SimulatedLine::Restart()
{
    toDevices_.Clear();
    toHost_.Clear();
    terminal_.Restart();
    modules_.Restart();
}

}  // namespace kelvora::bench
