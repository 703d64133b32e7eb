#include "layout/StripScale.h"

#include <algorithm>
#include <cmath>

namespace kelvora {

namespace {

// Two lines of text, with a gap above them.
constexpr int TextHeight = 700;

int Round(double pixels)
{
    return static_cast<int>(std::lround(pixels));
}

}  // namespace

int FullStripWidth()
{
    int width = StripGap;
    for (const StripButton button :
         {StripButton::Master, StripButton::KM064, StripButton::MCR, StripButton::ICCR})
        width += ShapeOf(button).width + StripGap;
    return width;
}

int FullStripHeight()
{
    const StripButtonShape& lowest = ShapeOf(StripButton::ICCR);
    return lowest.top + lowest.height + TextHeight;
}

int StripScale::ToTwips(int x) const
{
    return static_cast<int>(std::floor((x - left) / pixelsPerTwip));
}

PixelRect StripScale::PlaceOf(const PlacedButton& placed) const
{
    const StripButtonShape& shape = ShapeOf(placed.button);
    const int x = Round(left + placed.left * pixelsPerTwip);
    const int y = Round(top + placed.top * pixelsPerTwip);
    return {x, y, Round(left + (placed.left + shape.width) * pixelsPerTwip) - x,
            Round(top + (placed.top + shape.height) * pixelsPerTwip) - y};
}

StripScale FitStrip(const std::vector<PlacedButton>& strip, int width, int height)
{
    int right = 0;
    for (const PlacedButton& placed : strip)
        right = std::max(right, placed.left + ShapeOf(placed.button).width);
    // The full chain decides, so that a module keeps its size when others come or go.
    const double fit =
        TwipsPerPixel * std::min(double(width) / FullStripWidth(), double(height) / FullStripHeight());
    const double scale = std::clamp(fit, SmallestStripScale, LargestStripScale) / TwipsPerPixel;
    return {scale, std::max(0.0, (width - (right + StripGap) * scale) / 2),
            std::max(0.0, (height - FullStripHeight() * scale) / 2)};
}

}  // namespace kelvora
