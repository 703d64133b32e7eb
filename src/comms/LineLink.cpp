#include "comms/LineLink.h"

#include "comms/BridgeLink.h"
#include "comms/SerialLink.h"
#include "platform/LineAddress.h"

namespace kelvora {

LineLink::LineLink(SerialPort& port, EventLoop& loop) : port_(port), loop_(loop)
{
    Choose();
}

bool LineLink::Open(std::string_view settings)
{
    if (!link_->IsOpen() && IsBridge(port_.Device()) != isBridge_)
        Choose();
    port_.isGivenUp = isGivenUp;
    const bool isOpen = link_->Open(settings);
    port_.isGivenUp = nullptr;
    return isOpen;
}

void LineLink::Choose()
{
    // The former one gives the port's callbacks back before the next one takes them.
    link_.reset();
    isBridge_ = IsBridge(port_.Device());
    if (isBridge_)
        link_ = std::make_unique<BridgeLink>(port_, loop_);
    else
        link_ = std::make_unique<SerialLink>(port_, loop_);
    link_->onEvent = [this](LinkEvent event, std::string_view text) {
        if (onEvent)
            onEvent(event, text);
    };
    link_->watcher = [this](const LineTraffic& traffic) {
        if (watcher)
            watcher(traffic);
    };
}

}  // namespace kelvora
