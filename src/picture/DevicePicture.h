// The pictures on the strip's buttons, drawn from the module's record: its keys, tracks and lamps. One
// drawing serves the screen, paper and export.
#pragma once

#include <string>

#include "picture/ModuleStrip.h"
#include "setup/ModuleRecord.h"

namespace kelvora {

/// The shapes of one button's picture, from 0, 0 to the size of ShapeOf(button) in twips, for use inside a
/// larger SVG document. `record` is the record that the button stands for (the chip card unit's for its
/// keypad); null draws a new module. Parts have no ground of their own: they go over their parent's picture.
std::string DeviceShapes(StripButton button, const ModuleRecord* record);

/// The same as an SVG document of its own.
std::string DevicePicture(StripButton button, const ModuleRecord* record);

}  // namespace kelvora
