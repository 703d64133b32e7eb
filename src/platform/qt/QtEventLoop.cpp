#include "platform/qt/QtEventLoop.h"

#include <QTimer>
#include <utility>

namespace kelvora {

void QtEventLoop::After(std::chrono::milliseconds delay, std::function<void()> action)
{
    QTimer::singleShot(delay, std::move(action));
}

}  // namespace kelvora
