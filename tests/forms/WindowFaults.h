// What is wrong with a window as it stands on the screen, for eyes, hands and screen readers.
#pragma once

#include <QStringList>
#include <QWidget>

namespace kelvora {

/// The labels, buttons, boxes, titles, heads, tabs, hints and menus of a shown window whose text is wider or
/// higher than its place, a line each; none when all can be read.
QStringList CutTexts(QWidget& window);

/// The letters that two of its controls, or two entries of a menu, go by.
QStringList SharedMnemonics(QWidget& window);

/// What takes the focus, can be pressed, or is a picture, and has no name, a line each.
QStringList Nameless(QWidget& window);

/// What the Tab key stops at nowhere on its way through the window, though it should, a line each.
QStringList Unreached(QWidget& window);

/// The texts that stand out of their ground by less than 4.5 to 1, and the signs and borders that do by less
/// than 3 to 1, by the pixels that are painted, a line each. What is disabled may.
QStringList Faint(QWidget& window);

/// What can be pressed, in its menus too, and is smaller than a touch target, a line each.
QStringList SmallTargets(QWidget& window);

}  // namespace kelvora
