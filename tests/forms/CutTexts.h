// What is wrong with the texts of a window as it stands on the screen.
#pragma once

#include <QStringList>
#include <QWidget>

namespace kelvora {

/// The labels, buttons, boxes, titles, heads, tabs, hints and menus of a shown window whose text is wider or
/// higher than its place, a line each; none when all can be read.
QStringList CutTexts(QWidget& window);

/// The letters that two of its controls, or two entries of a menu, go by.
QStringList SharedMnemonics(QWidget& window);

}  // namespace kelvora
