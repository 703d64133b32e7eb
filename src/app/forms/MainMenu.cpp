#include "app/forms/MainMenu.h"

#include <QFileInfo>

#include "platform/qt/Text.h"

namespace kelvora {

MainMenu::MainMenu(QMenuBar& bar, Commands& commands) : commands_(commands)
{
    MakeFileMenu(bar);
    MakeSetupMenus(bar);
    MakeLineMenus(bar);
    MakeGeneralMenus(bar);
}

QMenu* MainMenu::AddMenu(QWidget* parent, const char* name, const MessageId& caption)
{
    auto* menu = new QMenu(parent);
    menu->setObjectName(QString::fromLatin1(name));
    parent->addAction(menu->menuAction());
    titled_.push_back({menu, caption});
    return menu;
}

void MainMenu::MakeFileMenu(QMenuBar& bar)
{
    QMenu* file = AddMenu(&bar, "FileMenu", Message::FileMenu);
    file->addAction(&commands_[Command::FileMenuNew]);
    file->addAction(&commands_[Command::FileMenuOpen]);
    recent_ = AddMenu(file, "FileMenuRecent", Message::FileMenuRecent);
    QObject::connect(recent_, &QMenu::aboutToShow, recent_, [this] { ListRecentFiles(); });
    for (const Command command : {Command::FileMenuSave, Command::FileMenuSaveAs, Command::FileMenuClose}) {
        file->addAction(&commands_[command]);
        setupEntries_.push_back(&commands_[command]);
    }
    file->addSeparator();
    file->addAction(&commands_[Command::FileMenuScan]);
    file->addSeparator();
    file->addAction(&commands_[Command::FileMenuExit]);
}

void MainMenu::MakeSetupMenus(QMenuBar& bar)
{
    QMenu* edit = AddMenu(&bar, "EditMenu", Message::EditMenu);
    edit->addAction(&commands_[Command::EditMenuUndo]);
    edit->addAction(&commands_[Command::EditMenuRedo]);
    layout_ = AddMenu(&bar, "LayoutMenu", Message::LayoutMenu);
    QMenu* add = AddMenu(layout_, "LayoutMenuAdd", Message::LayoutMenuAdd);
    for (const Command command : {Command::LayoutMenuAddKBMASTER, Command::LayoutMenuAddKB64,
                                  Command::LayoutMenuAddMCR, Command::LayoutMenuAddICCR})
        add->addAction(&commands_[command]);
    layout_->addAction(&commands_[Command::LayoutMenuDel]);
    layout_->addAction(&commands_[Command::LayoutMenuMove]);
    setupEntries_.push_back(edit->menuAction());
    setupEntries_.push_back(layout_->menuAction());
}

void MainMenu::MakeLineMenus(QMenuBar& bar)
{
    QMenu* tools = AddMenu(&bar, "ToolsMenu", Message::ToolsMenu);
    tools->addAction(&commands_[Command::ToolsMenuRescanLine]);
    tools->addSeparator();
    tools->addAction(&commands_[Command::ToolsMenuFlashDownload]);
    tools->addAction(&commands_[Command::ToolsMenuFlashVerify]);
    QMenu* dump = AddMenu(tools, "ToolsMenuFlashDump", Message::ToolsMenuFlashDump);
    dump->addAction(&commands_[Command::ToolsMenuFlashDumpSetup]);
    dump->addAction(&commands_[Command::ToolsMenuFlashDumpUpload]);
    tools->addSeparator();
    tools->addAction(&commands_[Command::EpromWizard]);
    setupEntries_.push_back(tools->menuAction());
}

void MainMenu::MakeGeneralMenus(QMenuBar& bar)
{
    QMenu* view = AddMenu(&bar, "ViewMenu", Message::ViewMenu);
    view->addAction(&commands_[Command::ViewMenuToolbar]);
    view->addAction(&commands_[Command::ViewMenuStatusBar]);
    QMenu* window = AddMenu(&bar, "WindowMenu", Message::WindowMenu);
    QObject::connect(window, &QMenu::aboutToShow, window, [this, window] {
        window->clear();
        for (const Command command :
             {Command::WindowMenuNext, Command::WindowMenuPrevious, Command::WindowMenuCascade,
              Command::WindowMenuTile, Command::WindowMenuCloseAll})
            window->addAction(&commands_[command]);
        window->addSeparator();
        listWindows(*window);
    });
    setupEntries_.push_back(window->menuAction());
    QMenu* help = AddMenu(&bar, "HelpMenu", Message::HelpMenu);
    help->addAction(&commands_[Command::HelpMenuGuide]);
    help->addSeparator();
    help->addAction(&commands_[Command::HelpMenuAbout]);
}

void MainMenu::ListRecentFiles()
{
    recent_->clear();
    const QStringList files = recentFiles();
    int number = 1;
    for (const QString& path : files) {
        const QFileInfo info(path);
        QString text = QStringLiteral("%1  %2  (%3)").arg(number).arg(info.fileName(), info.path());
        text.replace('&', QStringLiteral("&&"));
        // The first nine are reached by their digit.
        QAction* entry = recent_->addAction(number < 10 ? '&' + text : text);
        QObject::connect(entry, &QAction::triggered, recent_, [this, path] { openRecent(path); });
        ++number;
    }
    recent_->addSeparator();
    QAction* clear = recent_->addAction(clearText_);
    clear->setEnabled(!files.isEmpty());
    QObject::connect(clear, &QAction::triggered, recent_, [this] { clearRecent(); });
}

void MainMenu::Retranslate(const MessageCatalogue& catalogue)
{
    for (const Titled& row : titled_)
        row.menu->setTitle(ToQString(catalogue.Caption(row.caption)));
    clearText_ = ToQString(catalogue.Caption(Message::FileMenuRecentClear));
}

void MainMenu::ShowSetupEntries(bool shown)
{
    for (QAction* entry : setupEntries_)
        entry->setVisible(shown);
}

}  // namespace kelvora
