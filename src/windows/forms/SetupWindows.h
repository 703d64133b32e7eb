// The setup windows inside the main window: making, finding and listing them.
#pragma once

#include <QMdiArea>
#include <QMenu>
#include <QObject>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "flash/FlashImage.h"
#include "layout/SetupDesk.h"
#include "layout/SetupFileCommands.h"
#include "windows/forms/WindowMemory.h"

namespace kelvora {

class frmConfig;

class SetupWindows final : public QObject {
    Q_OBJECT

public:
    /// All outlive the object.
    SetupWindows(QMdiArea& area, SetupDesk& desk, WindowMemory& memory);
    ~SetupWindows() override;

    /// Opens a new window, to be filled by hand or by a scan.
    void New(SetupMode mode);

    /// Opens a new window that begins with this setup, which counts as unchanged.
    void NewFrom(const SetupDocument& document);

    /// Asks for a setup file and opens it.
    void Open();

    /// Opens each file in a window of its own; one that is open already comes to the front.
    void OpenFiles(const QStringList& paths);

    /// Opens a window with the setup that a backup was of; it has no file yet.
    frmConfig& OpenBackup(const std::string& name, const SetupDocument& document);

    /// Opens a window with a setup that was left unsaved, as a change of `opened`. A file that another window
    /// has is not its own.
    frmConfig& OpenUnsaved(OpenedSetup opened, const SetupDocument& document);

    /// Opens a file of the recent ones, which may be gone.
    void OpenRecent(const QString& path);

    /// The window in front; null without one.
    frmConfig* Active() const;
    std::vector<frmConfig*> All() const;

    void Activate(frmConfig& window);

    /// Whether a window waits for its scan, or is in it.
    bool HasScanPending() const;

    /// Whether all windows may close: each changed one is asked about, until one is to stay.
    bool MayCloseAll();
    void CloseAllUnasked();

    /// Sets all texts anew, Qt's own in the windows' menus included.
    void Retranslate();

    /// Adds an entry for each window.
    void List(QMenu& menu);

    /// Keeps the window's folders and file for later windows and runs.
    void Remember(const frmConfig& window);

signals:
    /// There is a new window, which is about to be shown.
    void windowAdded(frmConfig& setup);

    /// Files have not come yet, and are opened later.
    void isLate(const QString& paths);
    /// They can be opened now.
    void cameLate(const QStringList& paths);

private:
    /// Whether files can be read without a wait, or not at all. Those that keep it waiting are told of, now
    /// and once more when they have come, unless another window was opened meanwhile.
    bool HaveCome(const QStringList& paths);
    void OpenFile(const SetupFile& file);
    frmConfig& Show(std::unique_ptr<frmConfig> window);
    frmConfig* HolderOf(const std::string& path) const;

    QMdiArea& area_;
    SetupDesk& desk_;
    WindowMemory& memory_;
    QStringList late_;                                     ///< the files that have yet to come
    std::map<std::string, std::filesystem::path> places_;  ///< where the files of windows are in the end
};

}  // namespace kelvora
