// What the benchmarks of the windows share: the program as a technician has it before them, a stopwatch, and
// how to learn that something has been painted.
#pragma once

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QEvent>
#include <QMetaObject>
#include <QTemporaryDir>
#include <array>
#include <chrono>
#include <functional>
#include <memory>

#include "fakes/FakePrompt.h"
#include "layout/forms/frmConfig.h"
#include "platform/posix/PosixFiles.h"
#include "platform/qt/QtEventLoop.h"
#include "platform/qt/QtFileDialogs.h"
#include "windows/forms/MDIForm1.h"

namespace kelvora {

/// The main window on the screen, with folders of its own for settings and setup files.
class Workplace {
public:
    /// `ports` are those behind COM1 to COM4; they outlive it.
    explicit Workplace(const std::array<SerialPort*, LineCount>& ports = {});

    /// Opens another copy of the setup with all four modules, in a window of its own.
    void OpenAnother();

    /// Opens so many copies, and settles.
    void Open(int copies);

    /// Returns when nothing is left to be done: all is laid out and painted.
    static void Settle();

    QTemporaryDir folder;
    PosixFiles files;
    FakePrompt prompt;  ///< a box that nobody answers would hold all up
    QtFileDialogs dialogs;
    QtEventLoop loop;
    Program program;
    std::unique_ptr<MDIForm1> window;

private:
    std::string setup_;
    int copies_ = 0;
};

/// The time from its making to Stop: as the user sees it, and of the processor alone, in seconds.
class Stopwatch {
public:
    void Stop();

    double Seconds() const { return seconds_; }
    double ProcessorSeconds() const { return processorSeconds_; }

private:
    static double ProcessorTime();

    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    double processorStart_ = ProcessorTime();
    double seconds_ = 0;
    double processorSeconds_ = 0;
};

/// Takes the stopwatch's times as those of the iteration; the processor's are shown as "processor".
class Times {
public:
    explicit Times(benchmark::State& state) : state_(state) {}

    void Take(const Stopwatch& watch);

private:
    benchmark::State& state_;
    double processorSeconds_ = 0;
};

/// Waits for the first painting of a widget of this kind, and calls `then` with it once its whole window has
/// been painted.
template <class Widget>
class AfterPainting final : public QObject {
public:
    explicit AfterPainting(std::function<void(Widget&)> then) : then_(std::move(then))
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Paint || painted_)
            return false;
        auto* widget = dynamic_cast<Widget*>(watched);
        if (!widget)
            return false;
        painted_ = true;
        // A window's widgets are painted in one go: what is queued here runs after the last of them.
        QMetaObject::invokeMethod(
            this, [this, widget] { then_(*widget); }, Qt::QueuedConnection);
        return false;
    }

private:
    std::function<void(Widget&)> then_;
    bool painted_ = false;
};

}  // namespace kelvora
