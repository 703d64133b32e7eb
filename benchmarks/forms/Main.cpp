// The windows need an application before the first widget; they are drawn in memory, without a display.
#include <benchmark/benchmark.h>

#include <QApplication>

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Only Qt's own event loop tells when it is about to pause, and not after its next pause.
    qputenv("QT_NO_GLIB", "1");
    // Drawing in memory cannot raise windows, and says so each time.
    qputenv("QT_LOGGING_RULES", "default.warning=false");
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
