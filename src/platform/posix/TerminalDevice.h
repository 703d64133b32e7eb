// What stands behind a path that is to be a serial port, told without changing its settings.
#pragma once

#include <string>

namespace kelvora {

/// Whether something stands there that is certainly no terminal: a file, a folder, a disk, another device.
/// A character device is opened for that; where that fails it may be a terminal.
bool IsNoTerminal(const std::string& path);

/// Whether it is the side of a pseudo-terminal that programs take for a terminal.
bool IsPseudoTerminal(const std::string& path);

}  // namespace kelvora
