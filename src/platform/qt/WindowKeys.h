// Keys of a window that no menu entry or button has.
#pragma once

#include <QKeySequence>
#include <QList>
#include <functional>

class QWidget;

namespace kelvora {

/// Calls `action` on any of the keys while `window`, which is one of its own on the screen, is in front.
void AddKeys(QWidget& window, const QList<QKeySequence>& keys, const std::function<void()>& action);

}  // namespace kelvora
