#include "network/LinePort.h"

#include <utility>

#include "platform/LineAddress.h"

namespace kelvora {

LinePort::LinePort(std::unique_ptr<SerialPort> serial, std::unique_ptr<SerialPort> network)
    : serial_(std::move(serial)), network_(std::move(network)), port_(serial_.get())
{
    for (SerialPort* const port : {serial_.get(), network_.get()}) {
        port->onBytes = [this] {
            if (const auto tell = onBytes)
                tell();
        };
        port->onLost = [this] {
            if (const auto tell = onLost)
                tell();
        };
    }
}

void LinePort::SetDevice(std::string device)
{
    const std::string settings = Settings();
    port_->Close();
    port_ = ParseLineAddress(device) ? network_.get() : serial_.get();
    port_->SetDevice(std::move(device));
    port_->SetSettings(settings);
}

}  // namespace kelvora
