// How a drawing points things out, so that it is seen without colour: what differs has a filled corner and a
// thick edge, what is chosen stands in a ring.
#pragma once

#include "keymap/KeyGrid.h"
#include "picture/SvgDrawing.h"

namespace kelvora {

struct MarkShape {
    int radius = 0;  ///< of the thing's corners
    int width = 0;   ///< of the mark's edge, and half of the ring's
    int corner = 0;  ///< side of the filled corner
};

void DrawMark(SvgDrawing& drawing, const KeyRect& place, const MarkShape& shape);
void DrawRing(SvgDrawing& drawing, const KeyRect& place, const MarkShape& shape);

}  // namespace kelvora
