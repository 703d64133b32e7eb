// What stands in the middle of a setup window while its line is scanned: what is done, how far it is, the
// time left, and a button that stops it.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include "catalogue/MessageCatalogue.h"
#include "comms/LineWork.h"

namespace kelvora {

class WaitingPanel final : public QFrame {
public:
    /// `catalogue` outlives the panel.
    WaitingPanel(const MessageCatalogue& catalogue, QWidget* parent);

    /// Something has begun, of which no end is in sight yet.
    void Begin(const QString& text);
    void ShowProgress(const LineProgress& progress);

    /// A stop has been asked for.
    void ShowStopping();

    /// Pressed to ask for one.
    QPushButton& Stop() { return *stop_; }

private:
    const MessageCatalogue& catalogue_;
    QLabel* text_;
    QLabel* left_;
    QProgressBar* bar_;
    QPushButton* stop_;
};

}  // namespace kelvora
