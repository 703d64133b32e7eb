// The line below the wizard's pages: port and settings, what is being done, and how far it is.
#pragma once

#include <QWidget>

class QLabel;
class QProgressBar;

namespace kelvora {

class WizardStatus final : public QWidget {
public:
    explicit WizardStatus(QWidget* parent);

    /// What stands behind the port is grey until it is open.
    void ShowPort(const QString& text, bool isOpen);
    void ShowCaption(const QString& text);
    /// 0 to SearchSteps.
    void ShowProgress(int value);
    /// Something is done of which no end is in sight; other progress is no longer shown.
    void ShowEndless();
    /// Nothing is being done.
    void EndProgress();

private:
    QLabel* port_;
    QLabel* caption_;
    QProgressBar* progress_;
};

}  // namespace kelvora
