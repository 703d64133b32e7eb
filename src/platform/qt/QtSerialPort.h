// A serial port by Qt, made when it is first used.
#pragma once

#include <QSerialPort>
#include <memory>

#include "platform/SerialPort.h"
#include "platform/SerialSettings.h"

namespace kelvora {

class QtSerialPort final : public SerialPort {
public:
    /// `device` is the device's path, such as /dev/ttyS0.
    explicit QtSerialPort(std::string device);

    const std::string& Device() const override { return device_; }
    void SetDevice(std::string device) override;
    bool Open() override;
    void Close() override;
    bool IsOpen() const override { return open_; }
    PortFailure Failure() const override { return failure_; }
    std::string LastError() const override { return lastError_; }
    std::string AllowedGroup() const override;
    std::string Holder() const override;
    bool SetSettings(std::string_view settings) override;
    const std::string& Settings() const override { return settings_; }
    void Write(std::string_view bytes) override;
    std::size_t BytesWaiting() const override;
    std::string Read(std::size_t limit = 0) override;
    void DiscardInput() override;

private:
    bool OpenDevice();
    bool Apply(const SerialSettings& settings);
    void Fail(PortFailure failure);
    void Lose();

    std::string device_;
    std::string settings_ = "9600,n,8,1";
    PortFailure failure_ = PortFailure::None;
    std::string lastError_;
    std::unique_ptr<QSerialPort> port_;
    bool open_ = false;
};

}  // namespace kelvora
