// Draws a module's key grid as its key map says: one cap a key, larger keys without a seam, unused keys as
// crossed-out outlines, nothing where the module has no key.
#pragma once

#include <optional>
#include <string>

#include "picture/SvgDrawing.h"
#include "setup/ModuleRecord.h"

namespace kelvora {

/// Where a grid is drawn. `firstKeyNumber`: the number on the first position; none leaves the caps blank.
struct KeyGridPlace {
    int left = 0;
    int top = 0;
    int cell = 0;  ///< side of a grid position, gaps included
    std::optional<int> firstKeyNumber;
};

/// The rows that the record's map fills: its own, or more where the map goes on with keys.
int DrawnKeyRows(const ModuleRecord& record);

/// Draws the record's keys on dark ground. A record without columns draws nothing.
void DrawKeyGrid(SvgDrawing& drawing, const ModuleRecord& record, const KeyGridPlace& place);

/// The key grid alone as an SVG document, with the keys' numbers on the line.
std::string KeyGridPicture(const ModuleRecord& record, int firstKeyNumber);

}  // namespace kelvora
