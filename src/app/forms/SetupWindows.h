// The setup windows inside the main window: making, finding and listing them.
#pragma once

#include <QMdiArea>
#include <QMenu>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/Program.h"
#include "app/forms/WindowMemory.h"

namespace kelvora {

class frmConfig;

class SetupWindows {
public:
    /// All outlive the object.
    SetupWindows(QMdiArea& area, Program& program, WindowMemory& memory);

    /// Called with each new window, before it is shown.
    std::function<void(frmConfig&)> onNew;

    /// Opens a window that is filled as `mode` says, from `path` or by asking; one that cannot be filled is
    /// not shown.
    void New(SetupMode mode, const std::optional<std::string>& path = std::nullopt);

    /// Opens each file in a window of its own; one that is open already comes to the front.
    void OpenFiles(const QStringList& paths);

    /// Opens a file of the recent ones, which may be gone.
    void OpenRecent(const QString& path);

    /// The window in front; null without one.
    frmConfig* Active() const;
    std::vector<frmConfig*> All() const;

    void Activate(frmConfig& window);

    /// Adds an entry for each window.
    void List(QMenu& menu);

    /// Keeps the window's folders and file for later windows and runs.
    void Remember(frmConfig& window);

private:
    void Show(std::unique_ptr<frmConfig> window);
    bool BringForward(const std::string& path);

    QMdiArea& area_;
    Program& program_;
    WindowMemory& memory_;
};

}  // namespace kelvora
