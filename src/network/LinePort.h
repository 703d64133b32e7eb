// The port behind COM1 to COM4: a serial port of this machine or a line on the network, as the device's name
// says.
#pragma once

#include <memory>
#include <string>

#include "platform/SerialPort.h"

namespace kelvora {

class LinePort final : public SerialPort {
public:
    LinePort(std::unique_ptr<SerialPort> serial, std::unique_ptr<SerialPort> network);

    const std::string& Device() const override { return port_->Device(); }
    void SetDevice(std::string device) override;
    bool Open() override { return port_->Open(); }
    void Close() override { port_->Close(); }
    bool IsOpen() const override { return port_->IsOpen(); }
    PortFailure Failure() const override { return port_->Failure(); }
    std::string LastError() const override { return port_->LastError(); }
    std::string AllowedGroup() const override { return port_->AllowedGroup(); }
    std::string Holder() const override { return port_->Holder(); }
    bool SetSettings(std::string_view settings) override { return port_->SetSettings(settings); }
    const std::string& Settings() const override { return port_->Settings(); }
    bool HasFixedSettings() const override { return port_->HasFixedSettings(); }
    void Write(std::string_view bytes) override { port_->Write(bytes); }
    std::size_t BytesWaiting() const override { return port_->BytesWaiting(); }
    std::string Read(std::size_t limit = 0) override { return port_->Read(limit); }
    void DiscardInput() override { port_->DiscardInput(); }

private:
    std::unique_ptr<SerialPort> serial_;
    std::unique_ptr<SerialPort> network_;
    SerialPort* port_;  ///< one of the two
};

}  // namespace kelvora
