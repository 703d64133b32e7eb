// How pictures that can be chosen show that one is, and that the mouse is over one.
#pragma once

#include <QPainter>
#include <QPalette>

namespace kelvora {

/// How wide the frame of a chosen one is, in pixels.
inline constexpr int ChosenFrameWidth = 3;

/// Its pen: full while the keys go to it, else fainter.
QPen ChosenFrame(const QPalette& palette, bool hasKeys);

/// What lies over one under the mouse: a frame would look like another choice.
QColor HoverTint(const QPalette& palette);

}  // namespace kelvora
