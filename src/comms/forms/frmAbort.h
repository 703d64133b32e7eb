// The small dialog that is up while an operation runs on a line: let it go on, or stop it. It never holds the
// operation up.
#pragma once

#include <QDialog>
#include <QLabel>

#include "catalogue/MessageCatalogue.h"

namespace kelvora {

class frmAbort final : public QDialog {
    Q_OBJECT

public:
    frmAbort(const MessageCatalogue& catalogue, QWidget* parent);

    /// What the running operation does, or what stopping it means.
    void ShowInfo(const QString& text);

signals:
    /// The running operation is to stop.
    void terminated();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void ContinueCommand_Click();
    void AbortCommand_Click();

    QLabel* infoLabel_;
};

}  // namespace kelvora
