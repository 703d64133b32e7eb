// The line below the wizard's pages: port and settings, what is being done, and how far it is.
#pragma once

#include <QWidget>

class QLabel;
class QProgressBar;

namespace kelvora {

class WizardStatus final : public QWidget {
public:
    explicit WizardStatus(QWidget* parent);

    void ShowPort(const QString& text);
    void ShowCaption(const QString& text);
    /// 0 to SearchSteps.
    void ShowProgress(int value);
    /// Nothing is being done.
    void EndProgress();

private:
    QLabel* port_;
    QLabel* caption_;
    QProgressBar* progress_;
};

}  // namespace kelvora
