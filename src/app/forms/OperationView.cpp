#include "app/forms/OperationView.h"

#include <QGuiApplication>

#include "app/Messages.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

constexpr int NoProgress = -1;
constexpr int FullProgress = 100;

/// The main window's own timer.
constexpr int WindowClock = 0;

QString TimeLeftText(std::chrono::seconds left)
{
    const auto seconds = static_cast<int>(left.count());
    return QStringLiteral(" - %1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

}  // namespace

OperationView::OperationView(Program& program, StatusPanels& status, QWidget& window)
    : program_(program), status_(status), window_(window), escape_(QKeySequence(Qt::Key_Escape), &window)
{
    escape_.setEnabled(false);
    escape_.setAutoRepeat(false);
    QObject::connect(&escape_, &QShortcut::activated, &window, [this] { Interrupt(); });
    status_.onStop = [this] { Interrupt(); };
    program_.onOperation = [this] { ShowOperation(); };
    program_.onProgress = [this](const LineProgress& progress) { ShowProgress(progress); };
    program_.comms.Clock(WindowClock).onTick = [this] { KeepPointer(); };
}

OperationView::~OperationView()
{
    status_.onStop = nullptr;
    program_.onOperation = nullptr;
    program_.onProgress = nullptr;
    program_.comms.Clock(WindowClock).onTick = nullptr;
    program_.comms.Clock(WindowClock).Disable();
}

void OperationView::ShowOperation()
{
    const bool works = program_.busy && !program_.asking;
    escape_.setEnabled(works);
    status_.ShowStop(works && !program_.interruptionRequested);
    status_.ShowProgress(NoProgress);
    status_.ShowOperation(ToQString(program_.busy ? program_.running.operation : program_.IdleText()));
    KeepPointer();
    if (!works && abort_)
        abort_->close();
    if (onChange)
        onChange();
}

// The pointer shows the work for as long as it lasts; the clock that looks after it ends with it.
void OperationView::KeepPointer()
{
    if (const bool works = program_.busy && !program_.asking; works != pointerIsBusy_) {
        pointerIsBusy_ = works;
        if (pointerIsBusy_)
            QGuiApplication::setOverrideCursor(Qt::BusyCursor);
        else
            QGuiApplication::restoreOverrideCursor();
    }
    CountdownTimer& clock = program_.comms.Clock(WindowClock);
    if (!program_.busy)
        clock.Disable();
    else if (!clock.Enabled())
        clock.Enable(static_cast<int>(CountdownTimer::Interval.count()));
}

void OperationView::ShowProgress(const LineProgress& progress)
{
    status_.ShowProgress(static_cast<int>(progress.done * FullProgress / progress.total));
    QString text = ToQString(program_.running.operation);
    if (progress.left)
        text += TimeLeftText(*progress.left);
    status_.ShowOperation(text);
}

void OperationView::Interrupt()
{
    if (!program_.busy) {
        program_.Show(Message::Interruption, {BoxIcon::Information});
        return;
    }
    // Asked already: the command that is under way ends first.
    if (program_.interruptionRequested)
        return;
    if (!abort_) {
        abort_ = new frmAbort(program_.catalogue, &window_);
        abort_->setAttribute(Qt::WA_DeleteOnClose);
        abort_->onTerminate = [this] {
            program_.interruptionRequested = program_.busy;
            program_.running.status.clear();
            program_.running.operation = " " + program_.catalogue.Caption(Message::Stopping);
            status_.ShowStatus(QString());
            status_.ShowStop(false);
            status_.ShowOperation(ToQString(program_.running.operation));
        };
    }
    abort_->ShowInfo(ToQString(program_.running.operation).trimmed() + QLatin1Char('\n') +
                     ToQString(program_.catalogue.Caption(Message::AbortInfo)));
    abort_->show();
    abort_->activateWindow();
}

}  // namespace kelvora
