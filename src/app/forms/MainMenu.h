// The main window's menu bar: the commands in their menus, recent files and open windows.
#pragma once

#include <QMenu>
#include <QMenuBar>
#include <QStringList>
#include <functional>
#include <vector>

#include "app/MessageCatalogue.h"
#include "app/forms/Commands.h"

namespace kelvora {

class MainMenu {
public:
    MainMenu(QMenuBar& bar, Commands& commands);

    /// Called when a menu that lists something is about to be shown.
    std::function<QStringList()> recentFiles;
    std::function<void(const QString& path)> openRecent;
    std::function<void()> clearRecent;
    std::function<void(QMenu&)> listWindows;

    void Retranslate(const MessageCatalogue& catalogue);

    /// Shows what only a setup window uses, or hides it.
    void ShowSetupEntries(bool shown);

    QMenu& Layout() { return *layout_; }

private:
    QMenu* AddMenu(QWidget* parent, const char* name, const MessageId& caption);
    void MakeFileMenu(QMenuBar& bar);
    void MakeSetupMenus(QMenuBar& bar);
    void MakeLineMenus(QMenuBar& bar);
    void MakeGeneralMenus(QMenuBar& bar);
    void ListRecentFiles();

    struct Titled {
        QMenu* menu;
        MessageId caption;
    };

    Commands& commands_;
    std::vector<Titled> titled_;
    std::vector<QAction*> setupEntries_;
    QMenu* recent_ = nullptr;
    QMenu* layout_ = nullptr;
    QString clearText_;
};

}  // namespace kelvora
