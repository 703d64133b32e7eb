// The main window: it holds the setup windows and gives their commands to the one in front.
#pragma once

#include <QMainWindow>
#include <QMdiArea>
#include <QUndoGroup>
#include <concepts>
#include <vector>

#include "platform/qt/WindowParts.h"
#include "windows/Program.h"
#include "windows/forms/Commands.h"
#include "windows/forms/HelpOpener.h"
#include "windows/forms/JournalForms.h"
#include "windows/forms/LineForms.h"
#include "windows/forms/MainMenu.h"
#include "windows/forms/MainToolbar.h"
#include "windows/forms/OperationView.h"
#include "windows/forms/RecoveryForms.h"
#include "windows/forms/SeriesForms.h"
#include "windows/forms/SetupComparisons.h"
#include "windows/forms/SetupWindows.h"
#include "windows/forms/StartPage.h"
#include "windows/forms/StatusPanels.h"
#include "windows/forms/TemplateForms.h"
#include "windows/forms/WindowMemory.h"

namespace kelvora {

class frmConfig;

class MDIForm1 final : public QMainWindow {
    Q_OBJECT

public:
    /// `program` is loaded and outlives the window. `configFolder` is the person's; empty remembers nothing.
    /// Without `machine`, which outlives the window too, the devices behind the ports cannot be chosen.
    MDIForm1(Program& program, const QString& configFolder, MachinePorts* machine = nullptr);
    ~MDIForm1() override;

    /// Opens files that were named at the start, dropped or handed over, and comes to the front.
    void OpenFiles(const QStringList& paths);

    RecoveryForms& Unsaved() { return recovery_; }
    Commands& Actions() { return commands_; }
    StatusPanels& Status() { return *status_; }

    /// Shows anew what depends on the program's state.
    void Refresh();

    /// Simulated devices have begun, or ended.
    void ShowPractice();

    frmConfig* ActiveSetup() const { return setups_.Active(); }
    std::vector<frmConfig*> AllSetups() const { return setups_.All(); }

    /// None: the View menu shows and hides the toolbar.
    QMenu* createPopupMenu() override { return nullptr; }

signals:
    /// The windows are about to be hidden; the program will end.
    void shutdownBegun();

    /// The two seconds of closing down are over.
    void closed();

    /// Simulated devices are to be begun, or ended.
    void practiceChosen(bool isWanted);

    /// The program speaks another language.
    void languageChanged();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ConnectFileCommands();
    void ConnectLayoutCommands();
    void ConnectLineCommands();
    void ConnectFlashCommands();
    void ConnectGeneralCommands();
    void ConnectMenus();
    void ConnectStartPage();
    void ShowStartPage();
    void Prepare(frmConfig& setup);
    void Retranslate();
    void ChangeLanguage(const std::string& language);
    void OpenWaitingFiles();
    bool IsIdle() const;
    void ShowHint(const MessageId& hint, const QString& what = {});

    /// `action`, unless a dialog lies over the window.
    template <class Action>
    auto Reached(Action action)
    {
        return [ this, action ](auto... what) requires std::invocable<const Action&, decltype(what)...>
        {
            if (IsUnderDialog(*this))
                Refresh();
            else
                action(what...);
        };
    }

    template <class Action>
    void On(Command command, Action action)
    {
        connect(&commands_[command], &QAction::triggered, this, Reached(action));
    }

    /// Runs `action` on the setup window in front.
    template <class Action>
    void OnSetup(Command command, Action action)
    {
        On(command, [this, action] {
            if (frmConfig* setup = ActiveSetup())
                action(*setup);
        });
    }

    bool MayShutDown();
    void ShutDown();
    void EndShutdown();
    void ShowAbout();

    Program& program_;
    Commands commands_;
    MainMenu menu_;
    QMdiArea* area_;
    StartPage* start_;
    MainToolbar* toolbar_;
    StatusPanels* status_;
    OperationView operation_;
    LineForms lines_;
    WindowMemory memory_;
    SetupWindows setups_;
    TemplateForms templates_;
    SetupComparisons comparisons_;
    JournalForms journal_;
    SeriesForms series_;
    RecoveryForms recovery_;
    QUndoGroup undoGroup_;
    HelpOpener help_;
    QStringList waitingFiles_;  ///< to be opened once no dialog is open
    enum class Closing { No, Waiting, Done } closing_ = Closing::No;
};

}  // namespace kelvora
