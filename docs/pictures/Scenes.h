// The windows that the help shows, with something in them to see.
#pragma once

#include <QString>
#include <string>

#include "Viewer.h"
#include "windows/Program.h"

namespace kelvora {

struct SceneFolders {
    QString program;   ///< with the message files
    QString examples;  ///< setup files
};

/// Shows the viewer every window in that language. Throws std::runtime_error.
void TakeAll(const std::string& language, const SceneFolders& folders, const Viewer& viewer);

}  // namespace kelvora
