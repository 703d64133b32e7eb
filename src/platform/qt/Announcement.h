// What a screen reader says at once, though the focus stays where it is: what a glance would tell.
#pragma once

#include <QLabel>

namespace kelvora {

/// Tells `text` to a screen reader. `place` is the window, or the part of it, that shows the same to the eye.
void Announce(QWidget& place, const QString& text);

/// Shows `text` in the label, and tells it too where it is another one than before.
void ShowNews(QLabel& label, const QString& text);

}  // namespace kelvora
