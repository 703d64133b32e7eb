// What the main window shows of a running device operation: its texts, progress and time left in the status
// bar, the waiting pointer, and the dialog that can stop it.
#pragma once

#include <QPointer>
#include <QShortcut>
#include <functional>

#include "app/Program.h"
#include "app/forms/StatusPanels.h"
#include "comms/forms/frmAbort.h"

namespace kelvora {

class OperationView {
public:
    /// All outlive the view, which takes the program's callbacks for operations.
    OperationView(Program& program, StatusPanels& status, QWidget& window);
    ~OperationView();
    OperationView(const OperationView&) = delete;
    OperationView& operator=(const OperationView&) = delete;

    /// Called when an operation has begun or ended.
    std::function<void()> onChange;

    /// The Esc key and the Stop button: asks whether the running operation is to stop; while none runs, tells
    /// what it is for.
    void Interrupt();

private:
    void ShowOperation();
    void ShowProgress(const LineProgress& progress);
    void KeepPointer();

    Program& program_;
    StatusPanels& status_;
    QWidget& window_;
    QShortcut escape_;
    QPointer<frmAbort> abort_;
    bool pointerIsBusy_ = false;
};

}  // namespace kelvora
