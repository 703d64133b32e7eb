// Exporting a setup's sheet: which file is asked for, and what type of picture it becomes. No window lives
// here.
#pragma once

#include <functional>
#include <string>

#include "catalogue/UserFiles.h"
#include "picture/PictureType.h"

namespace kelvora {

/// The sheet of a window, and where it goes.
struct SheetExport {
    std::string svg;
    std::string folder;       ///< where to start
    std::string offeredName;  ///< without an ending
};

/// Asks for a file, whose name gets the ending of the type chosen unless it has one of them, and before
/// another file is replaced; then writes what `convert` makes of the drawing. A picture that cannot be made
/// (empty) or written gives a message, and what was there stays.
void ExportSheet(const UserFiles& files, const SheetExport& sheet,
                 const std::function<std::string(PictureType type, const std::string& svg)>& convert);

}  // namespace kelvora
