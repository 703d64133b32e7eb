#include "picture/StripPicture.h"

#include <algorithm>

#include "picture/DevicePicture.h"
#include "picture/ModuleStrip.h"
#include "picture/PictureMarks.h"

namespace kelvora {

namespace {

/// Around the strip in a document of its own: a ring has room there.
constexpr int PictureMargin = 90;

/// How thick a module's marks are.
constexpr int MarkWidth = 45;

/// A module's marks follow its housing, whose corners are round.
constexpr int MarkCorner = 90;

ModuleKind MainKind(ModuleKind kind)
{
    return IsPart(kind) ? ModuleKind::KM096 : kind;
}

bool Names(const std::vector<ModuleKind>& kinds, ModuleKind kind)
{
    return std::ranges::any_of(kinds, [&](ModuleKind marked) { return MainKind(marked) == kind; });
}

KeyRect PlaceOf(const PlacedButton& placed, int left, int top)
{
    const StripButtonShape& shape = ShapeOf(placed.button);
    return {left + placed.left - StripOriginLeft - StripGap,
            top + placed.top - ShapeOf(StripButton::Master).top, shape.width, shape.height};
}

void DrawMarks(SvgDrawing& drawing, const PlacedButton& placed, const KeyRect& place, const StripMarks& marks)
{
    const ModuleKind kind = KindOfButton(placed.button);
    if (!IsMainButton(placed.button))
        return;
    if (Names(marks.marked, kind))
        DrawMark(drawing, place, {MarkCorner, MarkWidth, 5 * MarkWidth});
    if (Names(marks.framed, kind))
        DrawRing(drawing, place, {MarkCorner, MarkWidth, 0});
}

}  // namespace

StripSize DrawStrip(SvgDrawing& drawing, const ModuleList& modules, int left, int top,
                    const StripMarks& marks)
{
    const std::vector<PlacedButton> strip = LayOutStrip(modules);
    StripSize size;
    for (const PlacedButton& placed : strip) {
        const KeyRect place = PlaceOf(placed, left, top);
        const auto index = FindModule(modules, KindOfButton(placed.button));
        drawing.Group(place.left, place.top, DeviceShapes(placed.button, index ? &modules[*index] : nullptr));
        size.width = std::max(size.width, place.left + place.width - left);
        size.height = std::max(size.height, place.top + place.height - top);
    }
    for (const PlacedButton& placed : strip)
        DrawMarks(drawing, placed, PlaceOf(placed, left, top), marks);
    return size;
}

std::string StripPicture(const ModuleList& modules, int width, const StripMarks& marks)
{
    SvgDrawing drawing;
    const StripSize size = DrawStrip(drawing, modules, PictureMargin, PictureMargin, marks);
    if (size.height == 0)
        return {};
    return SvgDocument(std::max(width, size.width) + 2 * PictureMargin, size.height + 2 * PictureMargin,
                       drawing.Shapes());
}

ModuleKind ModuleInPicture(const ModuleList& modules, int x, int y)
{
    for (const PlacedButton& placed : LayOutStrip(modules)) {
        const KeyRect place = PlaceOf(placed, PictureMargin, PictureMargin);
        const bool inside =
            x >= place.left && x < place.left + place.width && y >= place.top && y < place.top + place.height;
        if (inside && IsMainButton(placed.button))
            return KindOfButton(placed.button);
    }
    return ModuleKind::None;
}

}  // namespace kelvora
