#include "platform/qt/QtEventLoop.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <utility>

namespace kelvora {

namespace {

class QtTimer final : public Timer {
public:
    QtTimer() { timer_.setTimerType(Qt::PreciseTimer); }

    void Start(std::chrono::milliseconds interval, std::function<void()> tick) override
    {
        timer_.disconnect();
        timer_.callOnTimeout(std::move(tick));
        timer_.start(interval);
    }
    void Stop() override { timer_.stop(); }
    bool IsRunning() const override { return timer_.isActive(); }

private:
    QTimer timer_;
};

}  // namespace

void QtEventLoop::After(std::chrono::milliseconds delay, std::function<void()> action)
{
    QTimer::singleShot(delay, Qt::PreciseTimer, std::move(action));
}

void QtEventLoop::Yield()
{
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

EventLoop::Time QtEventLoop::Now() const
{
    return std::chrono::steady_clock::now();
}

std::unique_ptr<Timer> QtEventLoop::NewTimer()
{
    return std::make_unique<QtTimer>();
}

}  // namespace kelvora
