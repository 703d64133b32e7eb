// The main window's status bar: connection mode, port, status, operation, and the progress of what runs.
#pragma once

#include <QLabel>
#include <QProgressBar>
#include <QStatusBar>

#include "app/MessageCatalogue.h"

namespace kelvora {

class StatusPanels final : public QStatusBar {
public:
    explicit StatusPanels(QWidget* parent);

    void ShowMode(const QString& text)
    {
        mode_->setText(text);
        mode_->setVisible(!text.isEmpty());
    }
    void ShowPort(const QString& text) { port_->setText(text); }
    void ShowStatus(const QString& text) { status_->setText(text); }
    void ShowOperation(const QString& text) { operation_->setText(text); }
    QString Operation() const { return operation_->text(); }

    /// 0 to 100; anything else hides the bar.
    void ShowProgress(int percent);

    void Retranslate(const MessageCatalogue& catalogue);

private:
    QLabel* MakePanel(const char* name, int stretch);

    QLabel* mode_;
    QLabel* port_;
    QLabel* status_;
    QLabel* operation_;
    QProgressBar* progress_;
};

}  // namespace kelvora
