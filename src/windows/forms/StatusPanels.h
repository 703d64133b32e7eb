// The main window's status bar: connection mode, port, status, operation, and the progress of what runs.
#pragma once

#include <QLabel>
#include <QProgressBar>
#include <QStatusBar>
#include <QToolButton>

#include "catalogue/MessageCatalogue.h"
#include "platform/qt/ElidedLabel.h"

namespace kelvora {

/// One panel: a text of any length.
class StatusPanel final : public ElidedLabel {
public:
    StatusPanel(const char* name, QWidget* parent);

    /// What the panel is for, which a screen reader says before its text.
    void SetPurpose(const QString& purpose);
    void Show(const QString& text);

    QSize minimumSizeHint() const override;

private:
    QString purpose_;
};

class StatusPanels final : public QStatusBar {
    Q_OBJECT

public:
    explicit StatusPanels(QWidget* parent);

    // Each text replaces the one before; an empty mode hides its panel.
    void ShowMode(const QString& text);
    void ShowPort(const QString& text) { port_->Show(text); }
    void ShowStatus(const QString& text);
    void ShowOperation(const QString& text) { operation_->Show(text); }
    QString Operation() const { return operation_->text(); }

    /// 0 to FullProgress; anything else hides the bar.
    void ShowProgress(int percent);

    /// The button that stops what runs is there while it can be stopped.
    void ShowStop(bool shown) { stop_->setVisible(shown); }

    /// Whether the bar is there. One that is not wanted comes for as long as it shows a hint or is needed:
    /// for what can be done, or how far it is.
    void Want(bool isWanted);
    void Need(bool isNeeded);

    /// Says for a few seconds, or until a panel is shown anew, why something was not done.
    void ShowHint(const QString& text);

    /// Whether to say that the line is a simulated one.
    void ShowSimulated(bool simulated) { simulated_->setVisible(simulated); }

    void Retranslate(const MessageCatalogue& catalogue);

signals:
    /// That button was pressed.
    void stopRequested();

private:
    StatusPanel* AddPanel(const char* name, int stretch);
    void ShowOrHide();

    StatusPanel* mode_;
    StatusPanel* port_;
    StatusPanel* status_;
    StatusPanel* operation_;
    QLabel* simulated_;
    QProgressBar* progress_;
    QToolButton* stop_;
    QString statusTip_;
    bool isWanted_ = true;
    bool isNeeded_ = false;
};

}  // namespace kelvora
