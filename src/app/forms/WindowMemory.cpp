#include "app/forms/WindowMemory.h"

#include "platform/qt/Text.h"

namespace kelvora {

namespace {

constexpr qsizetype MostRecentFiles = 10;

constexpr auto GeometryKey = "Window/Geometry";
constexpr auto StateKey = "Window/State";
constexpr auto OpenFolderKey = "Folders/Open";
constexpr auto SaveFolderKey = "Folders/Save";
constexpr auto RecentKey = "RecentFiles";

}  // namespace

WindowMemory::WindowMemory(const QString& folder)
    : settings_(folder + QStringLiteral("/Kelvora.ini"), QSettings::IniFormat), remembers_(!folder.isEmpty())
{
}

void WindowMemory::RestoreWindow(QMainWindow& window) const
{
    if (!remembers_)
        return;
    window.restoreGeometry(settings_.value(GeometryKey).toByteArray());
    window.restoreState(settings_.value(StateKey).toByteArray());
}

void WindowMemory::SaveWindow(const QMainWindow& window)
{
    if (!remembers_)
        return;
    settings_.setValue(GeometryKey, window.saveGeometry());
    settings_.setValue(StateKey, window.saveState());
}

void WindowMemory::RestoreFolders(PosCfg& settings) const
{
    if (!remembers_)
        return;
    settings.InInitDir = PathFromQString(settings_.value(OpenFolderKey).toString());
    settings.OutInitDir = PathFromQString(settings_.value(SaveFolderKey).toString());
}

void WindowMemory::SaveFolders(const PosCfg& settings)
{
    if (!remembers_)
        return;
    settings_.setValue(OpenFolderKey, PathToQString(settings.InInitDir));
    settings_.setValue(SaveFolderKey, PathToQString(settings.OutInitDir));
}

QStringList WindowMemory::RecentFiles() const
{
    return remembers_ ? settings_.value(RecentKey).toStringList() : QStringList();
}

void WindowMemory::AddRecentFile(const QString& path)
{
    QStringList files = RecentFiles();
    files.removeAll(path);
    files.prepend(path);
    if (remembers_)
        settings_.setValue(RecentKey, files.mid(0, MostRecentFiles));
}

void WindowMemory::RemoveRecentFile(const QString& path)
{
    QStringList files = RecentFiles();
    files.removeAll(path);
    if (remembers_)
        settings_.setValue(RecentKey, files);
}

void WindowMemory::ClearRecentFiles()
{
    if (remembers_)
        settings_.remove(RecentKey);
}

}  // namespace kelvora
