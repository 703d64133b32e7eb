#include "windows/forms/WindowMemory.h"

#include <QStatusBar>

#include "comms/Comms.h"
#include "platform/SerialSettings.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

constexpr qsizetype MostRecentFiles = 12;

constexpr auto GeometryKey = "Window/Geometry";
constexpr auto StateKey = "Window/State";
constexpr auto StatusBarKey = "Window/StatusBar";
constexpr auto TouchSizeKey = "Window/TouchSize";
constexpr auto OpenFolderKey = "Folders/Open";
constexpr auto SaveFolderKey = "Folders/Save";
constexpr auto OpenFilterKey = "Folders/OpenFilter";
constexpr auto SaveFilterKey = "Folders/SaveFilter";
constexpr auto RecentKey = "RecentFiles";
constexpr auto PortKey = "Port";
constexpr auto PortSettingsKey = "PortSettings";

// One of the three filters that the dialogs have.
std::int16_t FilterIndex(const QVariant& remembered)
{
    const int index = remembered.toInt();
    return static_cast<std::int16_t>(index >= 1 && index <= 3 ? index : 1);
}

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
    window.statusBar()->setVisible(settings_.value(StatusBarKey, true).toBool());
}

void WindowMemory::SaveWindow(QMainWindow& window)
{
    if (!remembers_)
        return;
    settings_.setValue(GeometryKey, window.saveGeometry());
    settings_.setValue(StateKey, window.saveState());
    settings_.setValue(StatusBarKey, window.statusBar()->isVisibleTo(&window));
}

void WindowMemory::RestoreFolders(PosCfg& settings) const
{
    if (!remembers_)
        return;
    settings.InInitDir = PathFromQString(settings_.value(OpenFolderKey).toString());
    settings.OutInitDir = PathFromQString(settings_.value(SaveFolderKey).toString());
    settings.InFilterIndex = FilterIndex(settings_.value(OpenFilterKey));
    settings.OutFilterIndex = FilterIndex(settings_.value(SaveFilterKey));
}

void WindowMemory::SaveFolders(const PosCfg& settings)
{
    if (!remembers_)
        return;
    settings_.setValue(OpenFolderKey, PathToQString(settings.InInitDir));
    settings_.setValue(SaveFolderKey, PathToQString(settings.OutInitDir));
    settings_.setValue(OpenFilterKey, settings.InFilterIndex);
    settings_.setValue(SaveFilterKey, settings.OutFilterIndex);
}

void WindowMemory::RestoreLine(PosCfg& settings) const
{
    if (!remembers_)
        return;
    const int port = settings_.value(PortKey).toInt();
    if (port >= 1 && port <= LineCount)
        settings.CommsPort = static_cast<std::int16_t>(port);
    const std::string text = FromQString(settings_.value(PortSettingsKey).toString());
    if (!ParseSerialSettings(text))
        return;
    settings.SetBaudRate(BaudIndexOf(text));
    settings.PortSettings = text;
}

void WindowMemory::SaveLine(const PosCfg& settings)
{
    if (!remembers_)
        return;
    settings_.setValue(PortKey, settings.CommsPort);
    settings_.setValue(PortSettingsKey, ToQString(settings.PortSettings));
}

bool WindowMemory::IsTouchSize() const
{
    return remembers_ && settings_.value(TouchSizeKey).toBool();
}

void WindowMemory::SaveTouchSize(bool isTouchSize)
{
    if (remembers_)
        settings_.setValue(TouchSizeKey, isTouchSize);
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
