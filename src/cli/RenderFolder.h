// Many setup files drawn on all cores, each into a picture of its own.
#pragma once

#include <optional>

#include "cli/Render.h"
#include "picture/PictureType.h"

namespace kelvora {

/// Writes a picture of that type for each setup of the request into its output folder: under the folders that
/// a setup has below the folder that was named, with the setup's file name and the type's ending. Two that
/// would get one name are told, and the second is left out. Otherwise as Render; nothing where there is no
/// setup.
std::optional<int> RenderFolder(const RenderRequest& request, PictureType type, Console& console);

}  // namespace kelvora
