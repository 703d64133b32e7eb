// The main window's menu bar: the commands in their menus, recent files and open windows.
#pragma once

#include <QMenu>
#include <QMenuBar>
#include <QObject>
#include <QStringList>
#include <array>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "catalogue/MessageCatalogue.h"
#include "windows/Language.h"
#include "windows/forms/Commands.h"

namespace kelvora {

class MainMenu final : public QObject {
    Q_OBJECT

public:
    MainMenu(QMenuBar& bar, Commands& commands);

    // All of the following must be set before a menu is shown: each is asked when one that lists it is about
    // to be.

    std::function<QStringList()> recentFiles;
    std::function<void(QMenu&)> listWindows;
    std::function<void(QMenu&)> listComparisons;

    /// The ports of the Communications menu, 1 to 4.
    std::function<bool(int port)> isPortAvailable;

    /// The languages to choose from, and the code of the one in force.
    std::function<std::vector<OfferedLanguage>()> languages;
    std::function<std::string()> language;

    /// Enables the submenus as a whole.
    void Apply(const CommandState& state);

    /// Marks the port in use.
    void ShowPort(int port);

    void Retranslate(const MessageCatalogue& catalogue);

    /// Shows what only a setup window uses, or hides it.
    void ShowSetupEntries(bool shown);

    /// What can be done with the chosen module.
    QMenu& OfModule() { return *module_; }

signals:
    // What was chosen that is no command.
    void recentFileChosen(const QString& path);
    void clearRecentChosen();
    void portChosen(int port);
    void languageChosen(const std::string& code);

private:
    QMenu* AddMenu(QWidget* parent, const char* name, const MessageId& caption);
    void Add(QMenu& menu, std::initializer_list<Command> commands);
    // The same of commands that only a setup window uses.
    void AddForSetup(QMenu& menu, std::initializer_list<Command> commands);
    void MakeFileMenu(QMenuBar& bar);
    void MakeSetupMenus(QMenuBar& bar);
    void MakeCommunicationsMenu(QMenuBar& bar);
    void MakeToolsMenu(QMenuBar& bar);
    void MakeViewMenu(QMenuBar& bar);
    void MakeGeneralMenus(QMenuBar& bar);
    void ListRecentFiles();
    void ListLanguages();

    struct Titled {
        QMenu* menu;
        MessageId caption;
    };

    Commands& commands_;
    std::vector<Titled> titled_;
    std::vector<QAction*> setupEntries_;
    QMenu* recent_ = nullptr;
    QMenu* compare_ = nullptr;
    QMenu* module_ = nullptr;
    QMenu* add_ = nullptr;
    QMenu* dump_ = nullptr;
    QMenu* lines_ = nullptr;
    QMenu* languages_ = nullptr;
    std::array<QAction*, 4> ports_{};
    QString clearText_;
};

}  // namespace kelvora
