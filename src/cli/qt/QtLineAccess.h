// The lines of this machine for the command line, with Qt's serial ports and event loop.
#pragma once

#include <memory>

#include "cli/LineAccess.h"

namespace kelvora {

/// `argc` and `argv` of `main`, which outlive the object. Nothing of Qt is started before Prepare.
std::unique_ptr<LineAccess> MakeQtLineAccess(int& argc, char** argv);

}  // namespace kelvora
