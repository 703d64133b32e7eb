// The wizard's pages before its table: what the user has to know and to do, and the search.
#pragma once

#include <QFrame>

#include "catalogue/MessageCatalogue.h"

class QLabel;
class QPushButton;

namespace kelvora {

/// Step 0: who may use the wizard, and on which line.
QFrame* MakeIntroductionPage(const MessageCatalogue& catalogue);

/// Step 1: how the cables are connected.
QFrame* MakeInstructionPage(const MessageCatalogue& catalogue);

/// Lets a screen reader say the text of one of the two: the focus goes to a button, which says nothing of it.
void AnnouncePage(QWidget& page);

/// Step 2: the search and how it went.
class SearchPage final : public QFrame {
public:
    SearchPage(const MessageCatalogue& catalogue, int port);

    /// Nothing is opened, found or said yet.
    void Clear();
    void ShowOpened();
    /// The search runs, and can be stopped.
    void ShowSearching(bool searching);
    /// The search has found modules and goes on, until it is stopped.
    void ShowRepeating();
    /// How the search ended, where there is something to say; lines may end with CR LF.
    void ShowOutcome(const QString& text);
    /// The table can be shown.
    void ShowReady();

    QPushButton& StopCommand() { return *stop_; }

private:
    QLabel* AddText(const char* name, const QString& text);

    QWidget* opened_;
    QLabel* repeats_ = nullptr;
    QLabel* outcome_ = nullptr;
    QLabel* ready_ = nullptr;
    QPushButton* stop_;
};

}  // namespace kelvora
