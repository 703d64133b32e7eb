// The ports behind COM1 to COM4 as the programs make them.
#pragma once

#include <memory>
#include <string>

#include "network/LinePort.h"
#include "platform/EventLoop.h"

namespace kelvora {

/// A closed port, with Qt's serial port and the system's sockets behind it. `loop` outlives it.
std::unique_ptr<LinePort> MakeLinePort(EventLoop& loop, std::string device = {});

}  // namespace kelvora
