#include "picture/PictureMarks.h"

#include <string>

namespace kelvora {

namespace {

// Dark on light things, light on dark ground, and apart in grey.
constexpr std::string_view MarkColour = "#c04a00";
constexpr std::string_view RingColour = "#0a5fd0";
constexpr std::string_view RingSideColour = "#ffffff";

std::string Point(int x, int y)
{
    return std::to_string(x) + " " + std::to_string(y);
}

}  // namespace

void DrawMark(SvgDrawing& drawing, const KeyRect& place, const MarkShape& shape)
{
    const int right = place.left + place.width;
    drawing.Rect(place, shape.radius, {"none", MarkColour, shape.width});
    drawing.Path("M" + Point(right - shape.corner, place.top) + " L" + Point(right, place.top) + " L" +
                     Point(right, place.top + shape.corner) + " Z",
                 {MarkColour, MarkColour, shape.width / 2});
}

void DrawRing(SvgDrawing& drawing, const KeyRect& place, const MarkShape& shape)
{
    const KeyRect ring{place.left - shape.width / 2, place.top - shape.width / 2, place.width + shape.width,
                       place.height + shape.width};
    const int radius = shape.radius + shape.width / 2;
    drawing.Rect(ring, radius, {"none", RingSideColour, 2 * shape.width});
    drawing.Rect(ring, radius, {"none", RingColour, shape.width * 6 / 5});
}

}  // namespace kelvora
