// The journal's window in the main window: what is done there with the backups of its entries.
#pragma once

#include <QObject>
#include <QPointer>
#include <optional>

#include "flash/DumpText.h"
#include "journal/forms/JournalWindow.h"
#include "layout/SetupDesk.h"
#include "windows/forms/SetupComparisons.h"
#include "windows/forms/SetupWindows.h"

namespace kelvora {

class JournalForms final : public QObject {
public:
    /// All outlive the object.
    JournalForms(const SetupDesk& desk, SetupWindows& setups, SetupComparisons& comparisons);
    ~JournalForms() override;

    /// Opens the journal, or brings it to the front with what has come to it.
    void Show();

    /// Shows anew what can be done there.
    void Refresh();
    void Retranslate();

private:
    struct Backup {
        std::string path;
        FlashDump dump;
        SetupDocument document;
    };

    std::optional<Backup> Read(const JournalEntry& entry);
    frmConfig* Open(const JournalEntry& entry, const Backup& backup);
    void Compare(const JournalEntry& entry);
    void Restore(const JournalEntry& entry);

    const SetupDesk& desk_;
    SetupWindows& setups_;
    SetupComparisons& comparisons_;
    QPointer<JournalWindow> window_;
};

}  // namespace kelvora
