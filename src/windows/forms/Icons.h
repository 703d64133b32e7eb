// The program's icons: drawings in the palette's text colour, sharp at every size, on light and dark alike.
#pragma once

#include <QIcon>
#include <QString>

namespace kelvora {

/// The icon drawn in :/icons/NAME.svg, recoloured each time it is shown.
QIcon ThemedIcon(const QString& name);

/// The program's own icon, in its own colours.
QIcon ProgramIcon();

}  // namespace kelvora
