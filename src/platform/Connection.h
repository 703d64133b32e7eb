// A connection over the network to one program, as bytes. What happens to it is told on the event loop;
// nothing here waits.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/SerialPort.h"

namespace kelvora {

class Connection {
public:
    virtual ~Connection() = default;

    /// Begins to connect; how that ends is told later, or from here. `host` is a name or an address. There is
    /// no limit of time: who has waited long enough closes.
    virtual void Connect(const std::string& host, std::uint16_t port) = 0;

    /// Ends the connection, or the attempt. Nothing is told of it.
    virtual void Close() = 0;

    /// Hands over bytes. A loss of the connection is told later, not from here.
    virtual void Write(std::string_view bytes) = 0;

    std::function<void()> onConnected;
    /// What it calls may close the connection.
    std::function<void(std::string_view bytes)> onBytes;
    /// The connection did not come about, or has ended; it is closed then. `words` are the system's. A
    /// connection that was there ends as PortFailure::Disconnected.
    std::function<void(PortFailure failure, const std::string& words)> onClosed;
};

}  // namespace kelvora
