// The unsaved setups that earlier runs have left: which file, when, what differs. Each is taken, thrown away,
// or left for the next start.
#pragma once

#include <QDialog>
#include <functional>
#include <vector>

#include "catalogue/Texts.h"
#include "recovery/Recovery.h"

class QLabel;
class QListWidget;
class QPushButton;
class QTreeWidget;

namespace kelvora {

class RecoveryDialog final : public QDialog {
public:
    /// `texts` outlives the dialog, which closes itself after the last offer.
    RecoveryDialog(const Texts& texts, std::vector<RecoveryOffer> offers, QWidget* parent = nullptr);

    /// What is done with an offer; must be set. False for one that stays in the list.
    std::function<bool(const RecoveryOffer&)> take;
    std::function<bool(const RecoveryOffer&)> throwAway;

private:
    QPushButton* AddButton(const char* name, const MessageId& caption, const std::function<void()>& click);
    void MakeList();
    void Arrange();
    void AddRow(const RecoveryOffer& offer);
    void ShowSelection();
    void Finish(const std::function<bool(const RecoveryOffer&)>& act);
    void ThrowAway();
    void Compare();
    const RecoveryOffer* Selected() const;
    QString Caption(const MessageId& message) const;

    const Texts& texts_;
    std::vector<RecoveryOffer> offers_;
    QTreeWidget* list_;
    QLabel* detail_;
    QListWidget* differences_;
    QPushButton* take_;
    QPushButton* throwAway_;
    QPushButton* compare_;
    QPushButton* later_;
};

}  // namespace kelvora
