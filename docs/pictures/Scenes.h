// The windows that the help shows, with something in them to see.
#pragma once

#include <QString>
#include <string>

#include "Photographer.h"
#include "windows/Program.h"

namespace kelvora {

struct SceneFolders {
    QString program;   ///< with the message files
    QString examples;  ///< setup files
};

/// Takes every picture in that language. Throws std::runtime_error.
void TakeAll(const std::string& language, const SceneFolders& folders, const Photographer& photographer);

}  // namespace kelvora
