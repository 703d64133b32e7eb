#include "ports/Lines.h"

#include <algorithm>
#include <string_view>

#include "platform/LineAddress.h"

namespace kelvora {

namespace {

/// Settings that every port takes.
constexpr std::string_view ProbeSettings = "9600,n,8,1";

std::array<std::unique_ptr<LineLink>, LineCount> MakeLinks(const Lines::Ports& ports, EventLoop& eventLoop)
{
    std::array<std::unique_ptr<LineLink>, LineCount> links;
    for (std::size_t i = 0; i < links.size(); ++i)
        if (SerialPort* const port = ports.at(i))
            links.at(i) = std::make_unique<LineLink>(*port, eventLoop);
    return links;
}

std::size_t IndexOf(int line)
{
    return static_cast<std::size_t>(line) - 1;
}

}  // namespace

Lines::Lines(const Ports& ports, EventLoop& eventLoop)
    : ports_(ports),
      links_(MakeLinks(ports, eventLoop)),
      comms_(eventLoop, {links_[0].get(), links_[1].get(), links_[2].get(), links_[3].get()})
{
}

SerialPort* Lines::Port(int line) const
{
    return ports_.at(IndexOf(line));
}

bool Lines::HasLink() const
{
    return std::ranges::any_of(links_, [](const auto& link) { return link != nullptr; });
}

bool Lines::IsAvailable(int line) const
{
    if (line < 1 || IndexOf(line) >= ports_.size())
        return false;
    SerialPort* const port = Port(line);
    if (!port || port->IsOpen() || ParseLineAddress(port->Device()))
        return port != nullptr;
    // A port is there when it opens; trying is the only way to know. Settings that it refuses are no reason.
    const std::string settings = port->Settings();
    port->SetSettings(ProbeSettings);
    const bool opened = port->Open();
    if (opened)
        port->Close();
    port->SetSettings(settings);
    return opened;
}

bool Lines::HasSimulation() const
{
    return std::ranges::any_of(simulated_, [](bool isSimulated) { return isSimulated; });
}

bool Lines::IsSimulated(int line) const
{
    return simulated_.at(IndexOf(line));
}

void Lines::Simulate(int line, const std::string& device)
{
    Port(line)->SetDevice(device);
    simulated_.at(IndexOf(line)) = true;
}

}  // namespace kelvora
