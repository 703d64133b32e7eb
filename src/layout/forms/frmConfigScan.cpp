// How a setup window is filled from its line: when it is shown for that, and anew.
#include <QApplication>
#include <QPointer>
#include <utility>

#include "layout/LineScan.h"
#include "layout/ScanTexts.h"
#include "layout/forms/StripView.h"
#include "layout/forms/frmConfig.h"
#include "platform/Encoding.h"
#include "platform/qt/HelpTopic.h"
#include "platform/qt/Text.h"

namespace kelvora {

void frmConfig::ToolsMenuRescanLine_Click()
{
    if (session_.Desk().operation.IsBusy() || placing_ || session_.IsScanning())
        return;
    beforeRescan_ = session_.HeldAs();
    session_.StartScanning();
    ShowTitle();
    Form_Activate();
}

void frmConfig::Form_Activate()
{
    if (!session_.IsScanning())
        return;
    session_.Desk().eventLoop.After(std::chrono::milliseconds(0), [form = QPointer<frmConfig>(this)] {
        if (form && form->session_.IsScanning() && !form->session_.Desk().operation.IsBusy())
            form->Scan();
    });
}

void frmConfig::Scan()
{
    SetupDesk& desk = session_.Desk();
    const auto before = std::exchange(beforeRescan_, std::nullopt);
    const std::string status =
        desk.Words().Caption(Message::ScanStatus) + std::to_string(session_.settings.CommsPort) + " ...";
    strip_->ShowWaiting(ToQString(status));
    const HelpTopic topic(*this, "line.html#scan");
    ScanOutcome outcome;
    OperationNote note = desk.notes.Begin(JournalOperation::Scan, session_.settings.CommsPort);
    {
        const LineOperation operation(desk.operation, status,
                                      " " + desk.Words().Caption(Message::ScanOperation));
        LineHooks hooks = operation.Hooks();
        hooks.stopRequested = [this, isAsked = hooks.stopRequested] {
            const bool isStopped = isAsked();
            if (isStopped && strip_->Waiting())
                strip_->Waiting()->ShowStopping();
            return isStopped;
        };
        hooks.progress = [this, tell = hooks.progress](const LineProgress& progress) {
            tell(progress);
            if (strip_->Waiting())
                strip_->Waiting()->ShowProgress(progress);
        };
        hooks.mapRead = [this](const std::string& map) { strip_->ShowExpected(ModulesOfMap(map)); };
        outcome = session_.Scan(hooks);
    }
    note.Tell(TargetOf(session_.settings), outcome.line);
    TakeScan(before, outcome.document);
    desk.notes.Keep(note);
    TellOfScan(outcome, before.has_value());
}

void frmConfig::TellOfScan(const ScanOutcome& outcome, bool canUndo)
{
    const SetupDesk& desk = session_.Desk();
    const HelpTopic trouble(*this, "line.html#trouble");
    auto messages = DescribeScan(desk.Catalogue(), TargetOf(session_.settings), outcome,
                                 TextFromPath(session_.settings.Name));
    if (canUndo && !outcome.IsWhole() && !messages.empty())
        messages.front().extra += "\r\n" + desk.Words().Caption(Message::ScanUndoHint);
    for (const LaterMessage& message : messages)
        desk.Words().Show(message.message, {message.icon}, message.extra);
}

// A rescan is one step back, whatever came of it; a first scan is one when it has brought something.
void frmConfig::TakeScan(const std::optional<WindowFile>& before, SetupDocument scanned)
{
    if (before || !scanned.Modules.empty())
        Push(Message::UndoScan, std::move(scanned), before);
    else
        BeginWith(std::move(scanned));
    emit fileChanged();
    ShowTitle();
    // Who has gone on to another window stays there.
    if (const QWidget* focused = QApplication::focusWidget(); !focused || isAncestorOf(focused))
        FocusStrip();
}

}  // namespace kelvora
