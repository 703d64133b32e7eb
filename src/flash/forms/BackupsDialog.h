// The backups of device images, newest first: one of them can be compared with the device, or chosen to be
// restored.
#pragma once

#include <QDialog>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/UserFiles.h"
#include "flash/Backups.h"

class QLabel;
class QPushButton;
class QTreeWidget;

namespace kelvora {

/// The device of the window that the backups are looked at from.
struct BackupTarget {
    std::string name;                   ///< as people know it: its port
    const FlashImage* image = nullptr;  ///< its flash as last read; null when it was not; outlives the dialog
    bool canRestore = false;            ///< it can be talked to
};

class BackupsDialog final : public QDialog {
public:
    /// `files` and `backups` outlive the dialog. Accepted when a backup was chosen to be restored.
    BackupsDialog(const UserFiles& files, const Backups& backups, BackupTarget target,
                  QWidget* parent = nullptr);

    /// What was chosen.
    const std::optional<FlashDump>& Chosen() const { return chosen_; }
    /// What people know it by: port, date and file name, as far as it has them.
    const std::string& ChosenName() const { return chosenName_; }
    const std::string& ChosenPath() const { return chosenPath_; }

private:
    void MakeList();
    void Arrange();
    void Fill();
    void ShowSelection();
    QString StateOf(const BackupEntry& entry) const;
    std::string Name(const BackupEntry& entry) const;
    const BackupEntry* Selected() const;
    std::optional<FlashDump> ReadSelected();
    void Restore();
    void Compare();

    const UserFiles& files_;
    const Backups& backups_;
    BackupTarget target_;
    std::vector<BackupEntry> entries_;
    std::optional<FlashDump> chosen_;
    std::string chosenName_;
    std::string chosenPath_;
    QString folderText_;
    QTreeWidget* list_;
    QLabel* info_;
    QPushButton* restore_;
    QPushButton* compare_;
};

}  // namespace kelvora
