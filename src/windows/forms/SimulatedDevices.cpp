#include "windows/forms/SimulatedDevices.h"

#include <QPointer>
#include <utility>

namespace kelvora {

SimulatedDevices::SimulatedDevices(Program& program, const PortNames& names)
    : program_(program), names_(names)
{
}

SimulatedDevices::~SimulatedDevices() = default;

void SimulatedDevices::Begin(const std::string& stateFile)
{
    auto bench = std::make_unique<BenchProcess>();
    if (!bench->Start(stateFile)) {
        program_.texts.Show(Message::BenchNotStarted, {BoxIcon::Exclamation}, bench->LastError());
        emit changed();
        return;
    }
    bench_ = std::move(bench);
    std::int16_t first = 0;
    for (std::size_t i = 0; i < bench_->Devices().size(); ++i) {
        const int port = static_cast<int>(i) + 1;
        // A line that was named is meant.
        if (names_.IsFixed(port) || !program_.lines.Port(port))
            continue;
        program_.lines.Simulate(port, bench_->Devices()[i]);
        if (first == 0)
            first = static_cast<std::int16_t>(port);
    }
    if (first != 0 && !program_.lines.IsSimulated(program_.main.CommsPort))
        portBefore_ = std::exchange(program_.main.CommsPort, first);
    bench_->onEnded = [this] { TellEnded(); };
    emit changed();
}

void SimulatedDevices::End()
{
    bench_.reset();
    GivePortsBack();
}

void SimulatedDevices::GivePortsBack()
{
    // What was chosen meanwhile is meant.
    if (const std::int16_t before = std::exchange(portBefore_, 0);
        before != 0 && program_.lines.IsSimulated(program_.main.CommsPort))
        program_.main.CommsPort = before;
    program_.lines.EndSimulation();
    names_.ApplyTo(program_.lines.AllPorts());
    emit changed();
}

// The names of a dead simulation may soon be another program's. No box comes into a running operation.
void SimulatedDevices::TellEnded()
{
    constexpr std::chrono::milliseconds LookAgain{200};
    if (program_.operation.IsBusy()) {
        program_.world.eventLoop.After(LookAgain, [self = QPointer<SimulatedDevices>(this)] {
            if (self && self->bench_)
                self->TellEnded();
        });
        return;
    }
    GivePortsBack();
    program_.texts.Show(Message::BenchEnded, {BoxIcon::Exclamation});
}

}  // namespace kelvora
