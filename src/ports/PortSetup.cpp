#include "ports/PortSetup.h"

#include <algorithm>
#include <utility>

namespace kelvora {

PortSetup::PortSetup(std::vector<int> ports, PosCfg& window) : ports_(std::move(ports)), window_(window)
{
    texts_.fill(window.PortSettings);
    const auto wanted = std::ranges::find(ports_, window.CommsPort);
    if (wanted != ports_.end())
        selected_ = static_cast<std::size_t>(wanted - ports_.begin());
}

bool PortSetup::IsOfWindow() const
{
    return selected_ < ports_.size() && ports_[selected_] == window_.CommsPort;
}

void PortSetup::Take(std::string text)
{
    texts_.at(selected_) = std::move(text);
    if (IsOfWindow())
        window_.PortSettings = Text();
}

void PortSetup::ChooseBaud(int option)
{
    Take(WithBaud(Text(), option));
    // A speed outside the table must stay: the index follows only where a speed was chosen.
    if (IsOfWindow())
        window_.SetBaudRate(static_cast<std::int16_t>(option));
}

}  // namespace kelvora
