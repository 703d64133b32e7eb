// A serial port by Qt, made when it is first used.
#pragma once

#include <QSerialPort>
#include <memory>

#include "platform/SerialPort.h"

namespace kelvora {

class QtSerialPort final : public SerialPort {
public:
    /// `device` is the device's path, such as /dev/ttyS0.
    explicit QtSerialPort(std::string device);

    bool Open() override;
    void Close() override;
    bool IsOpen() const override;
    std::string LastError() const override;

private:
    std::string device_;
    std::unique_ptr<QSerialPort> port_;
};

}  // namespace kelvora
