// How the strip is scaled into its window: from twips to pixels and back. The chain is shown in the middle,
// as large as it fits; its proportions stay.
#pragma once

#include <vector>

#include "picture/ModuleStrip.h"

namespace kelvora {

/// How far the strip shrinks and grows with its window, as a factor of its size in pixels at 96 dpi.
inline constexpr double SmallestStripScale = 0.4;
inline constexpr double LargestStripScale = 3.0;

/// Room for a chain of all four main modules, with the two lines of text below it, in twips.
int FullStripWidth();
int FullStripHeight();

/// A place in pixels.
struct PixelRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

struct StripScale {
    double pixelsPerTwip = 1;
    double left = 0;  ///< of the strip's origin, in pixels
    double top = 0;

    /// The position in twips that a horizontal pixel lies in.
    int ToTwips(int x) const;

    /// Where a button stands; neighbours' edges are rounded alike.
    PixelRect PlaceOf(const PlacedButton& placed) const;
};

/// The scale of that strip in a container of that many pixels.
StripScale FitStrip(const std::vector<PlacedButton>& strip, int width, int height);

}  // namespace kelvora
