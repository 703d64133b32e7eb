#include "bench/SimulatedPort.h"

#include <utility>

namespace kelvora::bench {

SimulatedPort::SimulatedPort(SimulatedLine& line, std::string device)
    : line_(line), device_(std::move(device))
{
    line_.onBytes = [this](std::string_view bytes) { Arrive(bytes); };
    line_.onAway = [this] { Lose(); };
}

SimulatedPort::~SimulatedPort()
{
    line_.onBytes = nullptr;
    line_.onAway = nullptr;
}

void SimulatedPort::SetDevice(std::string device)
{
    Close();
    device_ = std::move(device);
}

bool SimulatedPort::Open()
{
    const auto settings = ParseSerialSettings(settings_);
    failure_ = line_.Faults().IsAway() ? PortFailure::Missing : refusal;
    if (failure_ != PortFailure::None || !settings)
        return false;
    line_.SetHostSettings(*settings);
    input_.clear();
    isOpen_ = true;
    return true;
}

void SimulatedPort::Close()
{
    if (!std::exchange(isOpen_, false))
        return;
    input_.clear();
    line_.HostClosed();
}

std::string SimulatedPort::LastError() const
{
    switch (failure_) {
        case PortFailure::None:
            return {};
        case PortFailure::Missing:
            return "No such file or directory";
        case PortFailure::NotAllowed:
            return "Permission denied";
        case PortFailure::InUse:
            return "Device or resource busy";
        case PortFailure::SevenBits:
        case PortFailure::BadSettings:
            return "Invalid argument";
        default:
            break;
    }
    return "Input/output error";
}

bool SimulatedPort::SetSettings(std::string_view settings)
{
    const auto parsed = ParseSerialSettings(settings);
    if (!parsed)
        return false;
    settings_ = settings;
    if (isOpen_)
        line_.SetHostSettings(*parsed);
    return true;
}

void SimulatedPort::Write(std::string_view bytes)
{
    if (isOpen_)
        line_.Send(bytes);
}

std::string SimulatedPort::Read(std::size_t limit)
{
    if (limit == 0 || limit >= input_.size())
        return std::exchange(input_, {});
    std::string read = input_.substr(0, limit);
    input_.erase(0, limit);
    return read;
}

void SimulatedPort::Arrive(std::string_view bytes)
{
    if (!isOpen_)
        return;
    input_ += bytes;
    if (const auto tell = onBytes)
        tell();
}

void SimulatedPort::Lose()
{
    if (!isOpen_)
        return;
    Close();
    failure_ = PortFailure::Missing;
    if (const auto tell = onLost)
        tell();
}

}  // namespace kelvora::bench
