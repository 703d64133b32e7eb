// What a device operation asks of the window's thread, in real time: the longest pass of the event loop while
// a line is scanned, and the processor's share of a wait in which nothing comes.
#include <QAbstractEventDispatcher>
#include <QApplication>
#include <algorithm>
#include <cmath>
#include <optional>

#include "Workplace.h"
#include "comms/Reply.h"
#include "comms/RunningOperation.h"
#include "platform/qt/BenchProcess.h"
#include "platform/qt/QtSerialPort.h"

namespace kelvora {

namespace {

/// The longest that the windows may be deaf to their user while the line works, in seconds.
constexpr double MostOfPass = 0.016;

/// How long the wait without an answer is, in milliseconds, and the most that it may take of the processor,
/// in seconds.
constexpr int WaitMs = 60'000;
constexpr double MostOfWait = 0.6;

/// The main window with a simulated line of all modules behind COM1.
struct WorkplaceWithLine {
    WorkplaceWithLine()
    {
        if (bench.Start({}))
            port.SetDevice(bench.Devices().front());
        QApplication::setActiveWindow(place.window.get());
        place.window->Refresh();
        Workplace::Settle();
    }

    QtSerialPort port{std::string()};
    BenchProcess bench;
    Workplace place{{&port}};
};

/// Times the passes of the event loop, each from the first event after a pause to the next pause. A pass that
/// finds more to do without a pause is not over.
class PassWatch final : public QObject {
public:
    PassWatch()
    {
        QCoreApplication::instance()->installEventFilter(this);
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
                [this] { End(); });
    }

    bool eventFilter(QObject* /*watched*/, QEvent* /*event*/) override
    {
        if (!pass_)
            pass_.emplace();
        return false;
    }

    double longest = 0;           ///< seconds
    double longestProcessor = 0;  ///< of the processor alone

private:
    void End()
    {
        if (!pass_)
            return;
        pass_->Stop();
        longest = std::max(longest, pass_->Seconds());
        longestProcessor = std::max(longestProcessor, pass_->ProcessorSeconds());
        pass_.reset();
    }

    std::optional<Stopwatch> pass_;
};

std::string Milliseconds(double seconds)
{
    return std::to_string(std::lround(seconds * 1000)) + " ms";
}

// Other programs delay a pass by the clock, now here, now there: of several scans the best counts, and the
// processor's time of the worst alone fails the benchmark.
void ScanLine(benchmark::State& state)
{
    WorkplaceWithLine desk;
    MDIForm1& window = *desk.place.window;
    const bool monitored = state.range(0) != 0;
    if (monitored)
        window.Actions()[Command::ViewMenuLineMonitor].trigger();
    double longest = 1;
    double longestProcessor = 0;
    for ([[maybe_unused]] auto iteration : state) {
        Workplace::Settle();
        PassWatch watch;
        window.Actions()[Command::FileMenuScan].trigger();
        do
            desk.place.loop.Yield();
        while (desk.place.program.operation.IsBusy() || window.ActiveSetup()->Session().IsScanning());
        longest = std::min(longest, watch.longest);
        longestProcessor = std::max(longestProcessor, watch.longestProcessor);
        if (window.ActiveSetup()->Session().document.Modules.empty())
            return state.SkipWithError("the scan has brought nothing");
    }
    const std::string told = "longest pass " + Milliseconds(longest) + ", of the processor " +
                             Milliseconds(longestProcessor) + (monitored ? ", line monitor open" : "");
    state.SetLabel(told);
    if (longestProcessor > MostOfPass)
        state.SkipWithError(("more than 16 ms: " + told).c_str());
}
BENCHMARK(ScanLine)->Arg(0)->Arg(1)->Iterations(3)->Repetitions(1)->UseRealTime()->Unit(benchmark::kSecond);

void WaitWithoutAnswer(benchmark::State& state)
{
    WorkplaceWithLine desk;
    Program& program = desk.place.program;
    for ([[maybe_unused]] auto iteration : state) {
        const LineOperation operation(program.operation, "Waiting", "Waiting");
        program.lines.Links()[0]->Open("9600,n,8,1");
        Stopwatch watch;
        const std::string reply = program.lines.Terminals().WaitReply(1, "$9900", WaitMs);
        watch.Stop();
        program.lines.Links()[0]->Close();
        state.counters["processor_s"] = watch.ProcessorSeconds();
        if (reply != ReplyTag::GivenTime)
            state.SkipWithError("the wait has not lasted");
        else if (watch.ProcessorSeconds() > MostOfWait)
            state.SkipWithError("a wait of 60 s took more than 0.6 s of the processor");
    }
}
BENCHMARK(WaitWithoutAnswer)->Iterations(1)->Repetitions(1)->UseRealTime()->Unit(benchmark::kSecond);

}  // namespace

}  // namespace kelvora
