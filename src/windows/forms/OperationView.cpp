#include "windows/forms/OperationView.h"

#include <QGuiApplication>

#include "catalogue/Messages.h"
#include "platform/qt/Announcement.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

constexpr int NoProgress = -1;

/// The main window's own timer.
constexpr int WindowClock = 0;

}  // namespace

std::string IdleText(const Texts& texts)
{
    return texts.Catalogue().Lookup(static_cast<std::int16_t>(Message::Idle.id));
}

OperationView::OperationView(RunningOperation& running, Comms& comms, const Texts& texts,
                             StatusPanels& status, QWidget& window)
    : running_(running),
      clock_(comms.Clock(WindowClock)),
      texts_(texts),
      status_(status),
      window_(window),
      escape_(QKeySequence(Qt::Key_Escape), &window)
{
    escape_.setEnabled(false);
    escape_.setAutoRepeat(false);
    connect(&escape_, &QShortcut::activated, this, &OperationView::Interrupt);
    connect(&status_, &StatusPanels::stopRequested, this, &OperationView::Interrupt);
    running_.onChange = [this] { ShowOperation(); };
    running_.onProgress = [this](const LineProgress& progress) { ShowProgress(progress); };
    clock_.onTick = [this] { KeepPointer(); };
}

OperationView::~OperationView()
{
    running_.onChange = nullptr;
    running_.onProgress = nullptr;
    clock_.onTick = nullptr;
    clock_.Disable();
}

void OperationView::ShowOperation()
{
    const bool works = running_.IsWorking();
    escape_.setEnabled(works);
    status_.ShowStop(works && !running_.IsStopAsked());
    status_.ShowProgress(NoProgress);
    status_.ShowOperation(ToQString(running_.IsBusy() ? running_.Name() : IdleText(texts_)));
    // Not each second that is left: those are for who asks.
    if (works && !pointerIsBusy_)
        Announce(status_, ToQString(running_.Name()).trimmed());
    KeepPointer();
    if (!works && abort_)
        abort_->close();
    emit changed();
}

// The pointer shows the work for as long as it lasts; the clock that looks after it ends with it.
void OperationView::KeepPointer()
{
    if (const bool works = running_.IsWorking(); works != pointerIsBusy_) {
        pointerIsBusy_ = works;
        if (pointerIsBusy_)
            QGuiApplication::setOverrideCursor(Qt::BusyCursor);
        else
            QGuiApplication::restoreOverrideCursor();
    }
    if (!running_.IsBusy())
        clock_.Disable();
    else if (!clock_.Enabled())
        clock_.Enable(static_cast<int>(CountdownTimer::Interval.count()));
}

void OperationView::ShowProgress(const LineProgress& progress)
{
    status_.ShowProgress(progress.Percent());
    QString text = ToQString(running_.Name());
    if (progress.left)
        text += ToQString(" - " + TimeLeft(*progress.left));
    status_.ShowOperation(text);
}

void OperationView::Interrupt()
{
    if (!running_.IsBusy()) {
        texts_.Show(Message::Interruption, {BoxIcon::Information});
        return;
    }
    // Asked already: the command that is under way ends first.
    if (running_.IsStopAsked())
        return;
    if (!abort_) {
        abort_ = new frmAbort(texts_.Catalogue(), &window_);
        abort_->setAttribute(Qt::WA_DeleteOnClose);
        connect(abort_, &frmAbort::terminated, this, [this] {
            if (running_.IsBusy())
                running_.AskToStop();
            running_.SayStopping(" " + texts_.Caption(Message::Stopping));
            status_.ShowStatus(QString());
            status_.ShowStop(false);
            status_.ShowOperation(ToQString(running_.Name()));
        });
    }
    abort_->ShowInfo(ToQString(running_.Name()).trimmed() + QLatin1Char('\n') +
                     ToQString(texts_.Caption(Message::AbortInfo)));
    abort_->show();
    abort_->activateWindow();
}

}  // namespace kelvora
