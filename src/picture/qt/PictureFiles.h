// Sheets as files: what Qt SVG makes of the drawings of the core. Needs an application object of Qt Gui.
#pragma once

#include <span>
#include <string>

class QPagedPaintDevice;

namespace kelvora {

/// Dots per inch of a picture that is looked at on a screen and still prints well.
inline constexpr int PictureDpi = 150;

/// An SVG drawing as a PNG picture, on its own ground; its size is the drawing's own at that resolution.
/// Empty for what is no drawing and for a picture that there is no memory for.
std::string PngOf(const std::string& svg, int dpi = PictureDpi);

/// Drawings as the pages of a PDF document, upright A4. Empty when one of them is no drawing.
std::string PdfOf(std::span<const std::string> pages);

/// Draws sheets on a device's pages, one a page, each as large as the page's printable part has room for.
/// False when one of them is no drawing, or when the device does not take them.
bool PaintPages(std::span<const std::string> pages, QPagedPaintDevice& device);

}  // namespace kelvora
