// The window that a dialog belongs to.
#pragma once

#include <QWidget>

namespace kelvora {

/// The active window; right after another dialog has closed there may be none, then the main window that is
/// shown.
QWidget* DialogParent();

}  // namespace kelvora
