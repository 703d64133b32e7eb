// Sockets of lines on the network: none of them waits, and one whose other end has vanished notices it.
#pragma once

#include <optional>

#include "network/posix/HostLookup.h"
#include "platform/SerialPort.h"
#include "platform/posix/Descriptor.h"

namespace kelvora {

/// A socket that connects to that address; it can be written to when it has, or has failed. Throws
/// std::system_error.
Descriptor BeginConnect(const SocketAddress& address);

/// How that has ended: 0, or the system's error.
int ConnectError(const Descriptor& socket);

/// What an error of the system's means for a line.
PortFailure FailureOfConnect(int error);

/// Holds the line of that address for this program as long as the result lives; nothing when another program
/// of this machine, or another line of this program, holds it. Throws std::system_error.
std::optional<Descriptor> HoldLine(const SocketAddress& address);

}  // namespace kelvora
