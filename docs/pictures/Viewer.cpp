#include "Viewer.h"

#include <QApplication>
#include <QTimer>
#include <exception>
#include <stdexcept>

namespace kelvora {

void Viewer::TakeDialog(const std::function<void()>& open, const std::function<void(QWidget&)>& act)
{
    bool seen = false;
    std::exception_ptr failure;
    QTimer watch;
    watch.callOnTimeout([&] {
        QWidget* const modal = QApplication::activeModalWidget();
        if (!modal)
            return;
        watch.stop();
        seen = true;
        try {
            act(*modal);
        } catch (...) {
            // Qt's event loop must not see it; it goes on below.
            failure = std::current_exception();
        }
        // Not closed: a window may ask whether it may.
        if (modal->isVisible())
            modal->hide();
    });
    watch.start(0);
    open();
    if (failure)
        std::rethrow_exception(failure);
    if (!seen)
        throw std::runtime_error("no dialog came");
}

}  // namespace kelvora
