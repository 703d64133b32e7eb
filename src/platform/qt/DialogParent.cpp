#include "platform/qt/DialogParent.h"

#include <QApplication>
#include <QMainWindow>

namespace kelvora {

QWidget* DialogParent()
{
    if (QWidget* active = QApplication::activeWindow())
        return active;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && dynamic_cast<QMainWindow*>(window))
            return window;
    return nullptr;
}

}  // namespace kelvora
