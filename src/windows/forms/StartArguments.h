// What the program is started with on a terminal or by the desktop.
#pragma once

#include <QStringList>
#include <string>
#include <vector>

#include "ports/PortNames.h"

class QCoreApplication;

namespace kelvora {

struct StartArguments {
    QStringList files;  ///< absolute paths
    std::vector<LineArgument> lines;
    bool bench = false;      ///< begin with simulated devices
    std::string benchState;  ///< the absolute path of what they remember; empty for new ones
};

/// The application's own. Ends the process with 2 when one of them is wrong, and with 0 after help or
/// version.
StartArguments ReadStartArguments(const QCoreApplication& application);

}  // namespace kelvora
