// The window of the journal: a table to sort, filter and search, from where the backup of an entry is opened,
// compared with a setup, or restored.
#pragma once

#include <QWidget>
#include <functional>
#include <string>

#include "journal/JournalEntry.h"
#include "journal/OperationNotes.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTableView;

namespace kelvora {

class JournalModel;
class JournalProxy;

class JournalWindow final : public QWidget {
    Q_OBJECT

public:
    /// A window of its own that deletes itself when it is closed. All outlive it; there is a journal.
    JournalWindow(const OperationNotes& notes, const Lines& lines, const Texts& texts);

    /// Reads the journal anew.
    void Reload();

    /// Shows what can be done now: whether a setup is open to compare with, whether an operation runs.
    void ShowSituation(bool hasSetup, bool isBusy);

    void Retranslate();

signals:
    /// What is wanted with the backup of an entry.
    void openRequested(const JournalEntry& entry);
    void comparisonRequested(const JournalEntry& entry);
    void restoreRequested(const JournalEntry& entry);

private:
    QPushButton* AddButton(const char* name, const std::function<void()>& click);
    void MakeTable();
    void Arrange();
    void ShowSelection();
    void Filter(const std::function<void()>& change);
    void ShowCount();
    const JournalEntry* Selected() const;
    bool HasDump(const JournalEntry* entry) const;

    const OperationNotes& notes_;
    const Lines& lines_;
    const Texts& texts_;
    JournalModel* model_;
    JournalProxy* proxy_;
    QLabel* searchLabel_;
    QLineEdit* search_;
    QCheckBox* failedOnly_;
    QTableView* table_;
    QLabel* empty_;
    QLabel* count_;
    QPlainTextEdit* detail_;
    QPushButton* open_;
    QPushButton* compare_;
    QPushButton* restore_;
    QPushButton* reload_;
    std::size_t damaged_ = 0;
    std::string problem_;  ///< why the journal could not be read
    bool hasSetup_ = false;
    bool isBusy_ = false;
};

}  // namespace kelvora
