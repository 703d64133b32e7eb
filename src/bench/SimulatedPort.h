// A serial port of this process with a simulated line behind it.
#pragma once

#include <string>
#include <string_view>

#include "bench/SimulatedLine.h"
#include "platform/SerialPort.h"

namespace kelvora::bench {

class SimulatedPort final : public SerialPort {
public:
    /// `line` outlives this and has no other port.
    explicit SimulatedPort(SimulatedLine& line, std::string device = "bench");
    SimulatedPort(const SimulatedPort&) = delete;
    SimulatedPort& operator=(const SimulatedPort&) = delete;
    ~SimulatedPort() override;

    const std::string& Device() const override { return device_; }
    void SetDevice(std::string device) override;
    bool Open() override;
    void Close() override;
    bool IsOpen() const override { return isOpen_; }
    PortFailure Failure() const override { return failure_; }
    std::string LastError() const override;
    std::string Holder() const override { return holder; }
    bool SetSettings(std::string_view settings) override;
    const std::string& Settings() const override { return settings_; }
    void Write(std::string_view bytes) override;
    std::size_t BytesWaiting() const override { return input_.size(); }
    std::string Read(std::size_t limit) override;
    void DiscardInput() override { input_.clear(); }

    /// Why the port does not open, whatever hangs on it; None lets it open.
    PortFailure refusal = PortFailure::None;
    /// Who holds it then; empty for nobody known.
    std::string holder;

private:
    void Arrive(std::string_view bytes);
    void Lose();

    SimulatedLine& line_;
    std::string device_;
    std::string settings_ = "9600,n,8,1";
    std::string input_;
    bool isOpen_ = false;
    PortFailure failure_ = PortFailure::None;
};

}  // namespace kelvora::bench
