// Serial devices as a test plugs them in, and a port that opens only where one of them allows it.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/SerialDevices.h"
#include "platform/SerialPort.h"

namespace kelvora {

class FakeSerialDevices final : public SerialDevices {
public:
    std::vector<SerialDevice> List() const override { return devices; }

    std::vector<SerialDevice> devices;
    std::map<std::string, std::string> groups;     ///< by path
    std::map<std::string, std::string> holders;    ///< by path
    std::map<std::string, PortFailure> condition;  ///< by path; a device that is not here is missing
};

/// A port without a line: it can be opened, set and closed.
class SilentPort final : public SerialPort {
public:
    SilentPort(const FakeSerialDevices& devices, std::string device)
        : devices_(devices), device_(std::move(device))
    {
    }

    const std::string& Device() const override { return device_; }
    void SetDevice(std::string device) override { device_ = std::move(device); }
    bool Open() override
    {
        if (whileOpening)
            whileOpening();
        const auto found = devices_.condition.find(device_);
        failure_ = found == devices_.condition.end() ? PortFailure::Missing : found->second;
        open_ = failure_ == PortFailure::None;
        return open_;
    }
    void Close() override { open_ = false; }
    bool IsOpen() const override { return open_; }
    PortFailure Failure() const override { return failure_; }
    std::string LastError() const override { return "the system's words"; }
    std::string AllowedGroup() const override { return Of(devices_.groups); }
    std::string Holder() const override { return Of(devices_.holders); }
    bool SetSettings(std::string_view settings) override
    {
        settings_ = settings;
        return true;
    }
    const std::string& Settings() const override { return settings_; }
    bool HasFixedSettings() const override { return open_ && fixedSettings; }
    void Write(std::string_view /*bytes*/) override {}
    std::size_t BytesWaiting() const override { return 0; }
    std::string Read(std::size_t /*limit*/) override { return {}; }
    void DiscardInput() override {}

    bool fixedSettings = false;
    std::function<void()> whileOpening;  ///< what else happens then; may be empty

private:
    std::string Of(const std::map<std::string, std::string>& byPath) const
    {
        return byPath.contains(device_) ? byPath.at(device_) : std::string();
    }

    const FakeSerialDevices& devices_;
    std::string device_;
    std::string settings_ = "9600,n,8,1";
    PortFailure failure_ = PortFailure::None;
    bool open_ = false;
};

}  // namespace kelvora
