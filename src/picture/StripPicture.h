// The strip of a setup's modules as a drawing, on screen, on paper and in a comparison.
#pragma once

#include <string>
#include <vector>

#include "picture/SvgDrawing.h"
#include "setup/ModuleRecord.h"

namespace kelvora {

/// Modules that are pointed out: with a corner filled and a thick edge, or in a ring. Parts count as the
/// module that they ride on.
struct StripMarks {
    std::vector<ModuleKind> marked{};
    std::vector<ModuleKind> framed{};
};

/// How far a strip reaches, in twips.
struct StripSize {
    int width = 0;
    int height = 0;
};

/// Draws the strip with its top left corner at left, top. An empty list draws nothing.
StripSize DrawStrip(SvgDrawing& drawing, const ModuleList& modules, int left, int top,
                    const StripMarks& marks = {});

/// The strip as an SVG document with room for one of `width`, in twips, at least; empty for an empty list.
std::string StripPicture(const ModuleList& modules, int width = 0, const StripMarks& marks = {});

/// The module at a point of that document; None beside the modules.
ModuleKind ModuleInPicture(const ModuleList& modules, int x, int y);

}  // namespace kelvora
