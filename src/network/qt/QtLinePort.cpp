#include "network/qt/QtLinePort.h"

#include <utility>

#include "network/NetworkPort.h"
#include "network/qt/QtConnection.h"
#include "platform/qt/QtSerialPort.h"

namespace kelvora {

std::unique_ptr<LinePort> MakeLinePort(EventLoop& loop, std::string device)
{
    auto port =
        std::make_unique<LinePort>(std::make_unique<QtSerialPort>(std::string()),
                                   std::make_unique<NetworkPort>(std::make_unique<QtConnection>(), loop));
    port->SetDevice(std::move(device));
    return port;
}

}  // namespace kelvora
