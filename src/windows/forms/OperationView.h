// What the main window shows of a running device operation: its texts, progress and time left in the status
// bar, the waiting pointer, and the dialog that can stop it.
#pragma once

#include <QObject>
#include <QPointer>
#include <QShortcut>

#include "catalogue/Texts.h"
#include "comms/Comms.h"
#include "comms/RunningOperation.h"
#include "comms/forms/frmAbort.h"
#include "windows/forms/StatusPanels.h"

namespace kelvora {

/// The text of the status bar's operation panel while nothing runs; message 590.
std::string IdleText(const Texts& texts);

class OperationView final : public QObject {
    Q_OBJECT

public:
    /// All outlive the view, which takes the operation's callbacks and the main window's clock.
    OperationView(RunningOperation& running, Comms& comms, const Texts& texts, StatusPanels& status,
                  QWidget& window);
    ~OperationView() override;

    /// The Esc key and the Stop button: asks whether the running operation is to stop; while none runs, tells
    /// what it is for.
    void Interrupt();

signals:
    /// An operation has begun or ended.
    void changed();

private:
    void ShowOperation();
    void ShowProgress(const LineProgress& progress);
    void KeepPointer();

    RunningOperation& running_;
    CountdownTimer& clock_;
    const Texts& texts_;
    StatusPanels& status_;
    QWidget& window_;
    QShortcut escape_;
    QPointer<frmAbort> abort_;
    bool pointerIsBusy_ = false;
};

}  // namespace kelvora
