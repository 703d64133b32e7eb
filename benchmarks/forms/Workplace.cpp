#include "Workplace.h"

#include <ctime>

#include "platform/qt/Text.h"

namespace kelvora {

namespace {

/// As long as something is due within this time, in milliseconds, the windows are not settled.
constexpr int SettlingPassMs = 20;

}  // namespace

Workplace::Workplace(const std::array<SerialPort*, LineCount>& ports)
    : program({files, prompt, dialogs, loop, ports},
              {PathFromQString(QCoreApplication::applicationDirPath()), PathFromQString(folder.path())}),
      setup_(files.Read(KELVORA_SOURCE_DIR "/examples/all-four.dat"))
{
    program.language.Load(program.main);
    window = std::make_unique<MDIForm1>(program, folder.path());
    window->show();
    Settle();
}

void Workplace::OpenAnother()
{
    const QString path = folder.filePath(QStringLiteral("till%1.dat").arg(++copies_));
    files.Write(PathFromQString(path), setup_);
    window->OpenFiles({path});
}

void Workplace::Open(int copies)
{
    for (int i = 0; i < copies; ++i)
        OpenAnother();
    Settle();
}

void Workplace::Settle()
{
    QCoreApplication::processEvents(QEventLoop::AllEvents, SettlingPassMs);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents(QEventLoop::AllEvents, SettlingPassMs);
}

void Stopwatch::Stop()
{
    seconds_ = std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
    processorSeconds_ = ProcessorTime() - processorStart_;
}

double Stopwatch::ProcessorTime()
{
    constexpr double NanosecondsPerSecond = 1e9;
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / NanosecondsPerSecond;
}

void Times::Take(const Stopwatch& watch)
{
    state_.SetIterationTime(watch.Seconds());
    processorSeconds_ += watch.ProcessorSeconds();
    state_.counters["processor"] = benchmark::Counter(processorSeconds_, benchmark::Counter::kAvgIterations);
}

}  // namespace kelvora
