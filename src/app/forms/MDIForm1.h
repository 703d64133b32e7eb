// The main window: it holds the setup windows and gives their commands to the one in front.
#pragma once

#include <QMainWindow>
#include <QMdiArea>
#include <QPointer>
#include <functional>
#include <memory>
#include <vector>

#include "app/Program.h"
#include "app/forms/Commands.h"
#include "app/forms/MainMenu.h"
#include "app/forms/MainToolbar.h"
#include "app/forms/StatusPanels.h"
#include "app/forms/WindowMemory.h"

class QMdiSubWindow;

namespace kelvora {

class frmConfig;
class HelpWindow;

class MDIForm1 final : public QMainWindow {
public:
    /// `program` is loaded and outlives the window. `configFolder` is the person's; empty remembers nothing.
    MDIForm1(Program& program, const QString& configFolder);
    ~MDIForm1() override;
    MDIForm1(const MDIForm1&) = delete;
    MDIForm1& operator=(const MDIForm1&) = delete;

    /// Opens each file in a window of its own; one that is open already comes to the front.
    void OpenFiles(const QStringList& paths);

    /// Called once when the windows are hidden and the program is about to end.
    std::function<void()> onShutdown;

    /// Called when the program has ended its two seconds of closing down.
    std::function<void()> onClosed;

    Commands& Actions() { return commands_; }
    StatusPanels& Status() { return *status_; }

    /// The setup window in front; null without one.
    frmConfig* ActiveSetup() const;
    std::vector<frmConfig*> SetupWindows() const;

    QMenu* createPopupMenu() override { return nullptr; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Connect();
    void ConnectFileCommands();
    void ConnectWindowCommands();
    void Retranslate();
    void Refresh();
    void ListWindows(QMenu& menu);

    void NewSetup(SetupMode mode, const std::optional<std::string>& path = std::nullopt);
    void ShowSetup(std::unique_ptr<frmConfig> window);
    bool BringForward(const std::string& path);
    void OpenRecent(const QString& path);
    void Remember(frmConfig& window);
    void WithSetup(void (frmConfig::*command)());

    bool MayShutDown();
    void ShutDown();
    void ShowHelp();
    void ShowAbout();
    void Interrupt();

    Program& program_;
    Commands commands_;
    MainMenu menu_;
    QMdiArea* area_;
    MainToolbar* toolbar_;
    StatusPanels* status_;
    WindowMemory memory_;
    QPointer<HelpWindow> help_;
    enum class Closing { No, Waiting, Done } closing_ = Closing::No;
};

}  // namespace kelvora
