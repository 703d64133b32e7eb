// Writes SVG text: the few shapes that the device pictures are made of, with plain attributes only, so that
// every viewer of SVG Tiny 1.2 shows the same. Lengths are in twips.
#pragma once

#include <string>
#include <string_view>

#include "keymap/KeyGrid.h"

namespace kelvora {

/// How a shape is painted. Colours are SVG colours or `url(#id)` of a gradient.
struct Paint {
    std::string_view fill = "none";
    std::string_view stroke = "none";
    int strokeWidth = 0;
};

/// How a line of text is set.
struct Lettering {
    enum class Anchor { Start, Middle, End };

    int size = 0;
    std::string_view colour = "#000000";
    Anchor anchor = Anchor::Middle;
    bool bold = false;
};

class SvgDrawing {
public:
    void Rect(const KeyRect& place, int radius, const Paint& paint);
    void Circle(int x, int y, int radius, const Paint& paint);
    void Line(int x1, int y1, int x2, int y2, const Paint& paint);

    /// `data` is SVG path data.
    void Path(std::string_view data, const Paint& paint);

    /// One line of text, UTF-8: y is its middle, x the place of its anchor. Characters that XML cannot carry
    /// become "?".
    void Text(int x, int y, const Lettering& lettering, std::string_view text);

    /// The same with its middle at x, y.
    void Text(int x, int y, int size, std::string_view colour, std::string_view text)
    {
        Text(x, y, {size, colour}, text);
    }

    /// Shapes of another drawing, moved.
    void Group(int dx, int dy, std::string_view shapes);

    /// A gradient from the top to the bottom of the shape that is filled with it.
    void VerticalGradient(std::string_view id, std::string_view top, std::string_view bottom);

    /// A gradient from the middle of the shape outwards; `rimOpacity` in percent.
    void RadialGradient(std::string_view id, std::string_view middle, std::string_view rim,
                        int rimOpacity = 100);

    /// The shapes so far, without a document around them.
    const std::string& Shapes() const { return shapes_; }

private:
    std::string shapes_;
};

/// An SVG document of that size around `shapes`: its viewBox is in twips, its own size in pixels at 96 dpi.
std::string SvgDocument(int width, int height, std::string_view shapes);

/// An A4 sheet, upright.
inline constexpr int SheetWidth = 11906;
inline constexpr int SheetHeight = 16838;

/// An SVG document of that size, on white, so that it is paper on a dark screen too.
std::string SvgSheet(std::string_view shapes);

}  // namespace kelvora
