// What the program remembers from one run to the next: the window's place, the last folders, recent files.
#pragma once

#include <QMainWindow>
#include <QSettings>
#include <QStringList>

#include "setup/PosCfg.h"

namespace kelvora {

class WindowMemory {
public:
    /// `folder` is the person's configuration folder; empty remembers nothing.
    explicit WindowMemory(const QString& folder);

    void RestoreWindow(QMainWindow& window) const;
    void SaveWindow(QMainWindow& window);

    void RestoreFolders(PosCfg& settings) const;
    void SaveFolders(const PosCfg& settings);

    /// The port and the settings chosen last; what was never chosen stays as it is.
    void RestoreLine(PosCfg& settings) const;
    void SaveLine(const PosCfg& settings);

    /// Whether all that is pressed is large enough for fingers.
    bool IsTouchSize() const;
    void SaveTouchSize(bool isTouchSize);

    /// Paths, the last used first.
    QStringList RecentFiles() const;
    void AddRecentFile(const QString& path);
    void RemoveRecentFile(const QString& path);
    void ClearRecentFiles();

private:
    QSettings settings_;
    bool remembers_;
};

}  // namespace kelvora
