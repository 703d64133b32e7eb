// Draws a module's key grid as its key map says: one cap a key, larger keys without a seam, unused keys as
// crossed-out outlines, nothing where the module has no key.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "picture/SvgDrawing.h"
#include "setup/ModuleRecord.h"

namespace kelvora {

/// In which colours a grid is drawn; all are SVG colours.
struct KeyGridLook {
    std::string_view ground;
    std::string_view side;  ///< of a cap, below its face
    std::string_view face;
    std::string_view edge;  ///< around a cap
    std::string_view number;
    std::string_view unused;  ///< the outline of an unused key, and its number
    /// Through an unused key whose number stands over it, then in brackets. Empty for none: a number would
    /// not be readable through a stroke as dark as the outline.
    std::string_view strokeBehindNumber;
};

/// Light caps on dark ground.
inline constexpr KeyGridLook ScreenLook{"#434a54", "#bcc3cc", "#f6f7f9", "none", "#22272e", "#b6bdc6", ""};

/// Black on white, to be told apart in grey too.
inline constexpr KeyGridLook PaperLook{"#dcdcdc", "#ffffff", "#ffffff", "#000000",
                                       "#000000", "#333333", "#909090"};

/// Positions, from 1, that are pointed out; see picture/PictureMarks.h.
struct KeyGridMarks {
    std::vector<int> marked{};  ///< of caps
    int framed = 0;             ///< in a ring, a covered one with its larger key; 0 for none
};

/// Where a grid is drawn and how. `firstKeyNumber`: the number on the first position; none leaves the caps
/// blank. What it points to outlives it.
struct KeyGridPlace {
    int left = 0;
    int top = 0;
    int cell = 0;  ///< side of a grid position, gaps included
    std::optional<int> firstKeyNumber;
    const KeyGridLook* look = &ScreenLook;
    const KeyGridMarks* marks = nullptr;
};

/// The rows that the record's map fills: its own, or more where the map goes on with keys.
int DrawnKeyRows(const ModuleRecord& record);

/// A record without columns draws nothing.
void DrawKeyGrid(SvgDrawing& drawing, const ModuleRecord& record, const KeyGridPlace& place);

/// One cap of that type on its ground, its grid position at 0, 0: what a legend shows.
std::string KeyCapShapes(char type, int cell, const KeyGridLook& look);

/// The key grid alone as an SVG document, with the keys' numbers on the line.
std::string KeyGridPicture(const ModuleRecord& record, int firstKeyNumber, const KeyGridMarks& marks = {});

/// The grid position in that picture at a point of it, in twips; 0 beside the grid.
int PositionInPicture(const ModuleRecord& record, int x, int y);

}  // namespace kelvora
