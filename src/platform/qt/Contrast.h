// How much colours stand out of each other, as WCAG 2 counts it.
#pragma once

#include <QColor>
#include <QPalette>

namespace kelvora {

/// 1 for the same colour, up to 21 for black and white.
double Contrast(const QColor& one, const QColor& other);

/// The contrast that a text shall have, a little more than the 4.5 that WCAG 2 asks for.
inline constexpr double ReadableContrast = 4.7;

/// `ink`, darker or lighter by as much as it needs to be read on `ground`.
QColor Readable(const QColor& ink, const QColor& ground);

/// `ink` as faint as it may be: mixed with `ground` as long as it stands out of it by `least`. `ink` itself
/// where that does not.
QColor Standing(const QColor& ink, const QColor& ground, double least);

/// What a border is drawn in, to be seen on the window and on what lies on it.
QColor BorderColour(const QPalette& palette);

}  // namespace kelvora
