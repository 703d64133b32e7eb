// What a screen reader says at once, though the focus stays where it is: what a glance would tell.
#pragma once

#include <QWidget>

namespace kelvora {

/// Tells `text` to a screen reader. `place` is the window, or the part of it, that shows the same to the eye.
void Announce(QWidget& place, const QString& text);

}  // namespace kelvora
