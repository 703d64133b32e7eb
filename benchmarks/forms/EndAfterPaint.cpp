// A plug-in for any Qt program, started with "-plugin endafterpaint": once the first window has been painted
// it writes the time in microseconds since 1970, the processor time spent so far in microseconds, and the
// most memory held so far in KiB, on one line, and ends the process at once.
#include <QCoreApplication>
#include <QEvent>
#include <QGenericPlugin>
#include <QWidget>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>

namespace {

long Microseconds(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return time.tv_sec * 1'000'000 + time.tv_nsec / 1'000;
}

long PeakKiB()
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.starts_with("VmHWM:"))
            return std::stol(line.substr(line.find(':') + 1));
    return 0;
}

void End()
{
    const long now = Microseconds(CLOCK_REALTIME);
    const long processor = Microseconds(CLOCK_PROCESS_CPUTIME_ID);
    std::printf("%ld %ld %ld\n", now, processor, PeakKiB());
    std::fflush(stdout);
    std::_Exit(0);
}

class PaintWatch final : public QObject {
public:
    PaintWatch() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && watched->isWidgetType()) {
            QCoreApplication::instance()->removeEventFilter(this);
            // A window's widgets are painted in one go: what is queued here runs after the last of them.
            QMetaObject::invokeMethod(this, &End, Qt::QueuedConnection);
        }
        return false;
    }
};

class EndAfterPaint final : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "EndAfterPaint.json")

public:
    QObject* create(const QString& /*name*/, const QString& /*arguments*/) override { return new PaintWatch; }
};

}  // namespace

#include "EndAfterPaint.moc"
