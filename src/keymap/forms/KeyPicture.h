// The legend of a key form: what each type looks like on the grid.
#pragma once

#include <QIcon>

class QPalette;

namespace kelvora {

/// Its width and height in pixels.
inline constexpr int KeyPictureSide = 28;

/// A key over so many of two by two cells of a housing, as a desktop of that palette shows it.
QIcon KeyPicture(const QSize& cells, bool unused, const QPalette& palette);

}  // namespace kelvora
