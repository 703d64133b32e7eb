#include "windows/forms/MainMenu.h"

#include <QFileInfo>

#include "platform/qt/Text.h"

namespace kelvora {

namespace {

// Room for a recent file's folder in the menu, in pixels.
constexpr int FolderWidth = 360;

}  // namespace

MainMenu::MainMenu(QMenuBar& bar, Commands& commands) : commands_(commands)
{
    MakeFileMenu(bar);
    MakeSetupMenus(bar);
    MakeCommunicationsMenu(bar);
    MakeToolsMenu(bar);
    MakeViewMenu(bar);
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
    file->addAction(&commands_[Command::FileMenuNewFromTemplate]);
    file->addAction(&commands_[Command::FileMenuOpen]);
    recent_ = AddMenu(file, "FileMenuRecent", Message::FileMenuRecent);
    connect(recent_, &QMenu::aboutToShow, recent_, [this] { ListRecentFiles(); });
    for (const Command command : {Command::FileMenuSave, Command::FileMenuSaveAs,
                                  Command::FileMenuSaveAsTemplate, Command::FileMenuClose}) {
        file->addAction(&commands_[command]);
        setupEntries_.push_back(&commands_[command]);
    }
    setupEntries_.push_back(file->addSeparator());
    for (const Command command :
         {Command::FileMenuPrint, Command::FileMenuPrintPreview, Command::FileMenuExport}) {
        file->addAction(&commands_[command]);
        setupEntries_.push_back(&commands_[command]);
    }
    compare_ = AddMenu(file, "FileMenuCompare", Message::CompareMenu);
    setupEntries_.push_back(compare_->menuAction());
    connect(compare_, &QMenu::aboutToShow, compare_, [this] {
        compare_->clear();
        listComparisons(*compare_);
    });
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
    edit->addSeparator();
    edit->addAction(&commands_[Command::EditMenuCopy]);
    edit->addAction(&commands_[Command::EditMenuPaste]);
    QMenu* layout = AddMenu(&bar, "LayoutMenu", Message::LayoutMenu);
    add_ = AddMenu(layout, "LayoutMenuAdd", Message::LayoutMenuAdd);
    for (const Command command : {Command::LayoutMenuAddKBMASTER, Command::LayoutMenuAddKB64,
                                  Command::LayoutMenuAddMCR, Command::LayoutMenuAddICCR})
        add_->addAction(&commands_[command]);
    layout->addAction(&commands_[Command::LayoutMenuDel]);
    layout->addAction(&commands_[Command::LayoutMenuMove]);
    layout->addSeparator();
    layout->addAction(&commands_[Command::LayoutMenuOptions]);
    setupEntries_.push_back(edit->menuAction());
    setupEntries_.push_back(layout->menuAction());
    module_ = new QMenu(&bar);
    module_->setObjectName(QStringLiteral("ModuleMenu"));
    titled_.push_back({module_, Message::LayoutMenu});
    module_->addActions(layout->actions());
    module_->addSeparator();
    module_->addAction(&commands_[Command::EditMenuCopy]);
    module_->addAction(&commands_[Command::EditMenuPaste]);
}

void MainMenu::MakeCommunicationsMenu(QMenuBar& bar)
{
    QMenu* menu = AddMenu(&bar, "CommunicationsMenu", Message::CommunicationsMenu);
    menu->addAction(&commands_[Command::CommunicationsMenuPosConnection]);
    menu->addAction(&commands_[Command::CommunicationsMenuKeybConnection]);
    QAction* separator = menu->addSeparator();
    separator->setObjectName(QStringLiteral("CommunicationsMenuBar1"));
    // A setup window fixes its mode when it is loaded; the menu does not offer the choice.
    commands_[Command::CommunicationsMenuPosConnection].setVisible(false);
    commands_[Command::CommunicationsMenuKeybConnection].setVisible(false);
    separator->setVisible(false);
    lines_ = AddMenu(menu, "CommunicationsMenuLines", Message::CommunicationsMenuLines);
    for (std::size_t i = 0; i < ports_.size(); ++i) {
        const int port = static_cast<int>(i) + 1;
        QAction* line = lines_->addAction(QString());
        line->setObjectName(QStringLiteral("CommunicationsMenuLine%1").arg(port));
        line->setCheckable(true);
        connect(line, &QAction::triggered, lines_, [this, port] {
            emit portChosen(port);
            ShowPort(port);
        });
        ports_.at(i) = line;
    }
    connect(lines_, &QMenu::aboutToShow, lines_, [this] {
        for (std::size_t i = 0; i < ports_.size(); ++i)
            ports_.at(i)->setEnabled(isPortAvailable(static_cast<int>(i) + 1));
    });
    menu->addAction(&commands_[Command::CommunicationsMenuSettings]);
    menu->addAction(&commands_[Command::CommunicationsMenuPorts]);
    menu->addSeparator();
    menu->addAction(&commands_[Command::CommunicationsMenuPractice]);
    // Without a setup window only the ports themselves can be chosen.
    setupEntries_.push_back(lines_->menuAction());
    setupEntries_.push_back(&commands_[Command::CommunicationsMenuSettings]);
}

void MainMenu::Apply(const CommandState& state)
{
    recent_->setEnabled(state.fileOpen);
    compare_->setEnabled(state.sheet);
    add_->setEnabled(state.layout.add);
    lines_->setEnabled(state.ports);
    languages_->setEnabled(state.language);
    dump_->setEnabled(state.flash);
}

void MainMenu::ShowPort(int port)
{
    for (std::size_t i = 0; i < ports_.size(); ++i)
        ports_.at(i)->setChecked(static_cast<int>(i) + 1 == port);
}

void MainMenu::MakeToolsMenu(QMenuBar& bar)
{
    QMenu* tools = AddMenu(&bar, "ToolsMenu", Message::ToolsMenu);
    tools->addAction(&commands_[Command::ToolsMenuRescanLine]);
    tools->addSeparator();
    tools->addAction(&commands_[Command::ToolsMenuFlashDownload]);
    tools->addAction(&commands_[Command::ToolsMenuFlashVerify]);
    dump_ = AddMenu(tools, "ToolsMenuFlashDump", Message::ToolsMenuFlashDump);
    dump_->addAction(&commands_[Command::ToolsMenuFlashDumpSetup]);
    dump_->addAction(&commands_[Command::ToolsMenuFlashDumpUpload]);
    tools->addSeparator();
    tools->addAction(&commands_[Command::ToolsMenuFlashRestore]);
    tools->addAction(&commands_[Command::ToolsMenuFlashBackups]);
    tools->addSeparator();
    tools->addAction(&commands_[Command::EpromWizard]);
    tools->addSeparator();
    // All of it but the rest works on the line of a setup window.
    for (QAction* entry : tools->actions())
        setupEntries_.push_back(entry);
    tools->addAction(&commands_[Command::ToolsMenuSeries]);
    tools->addAction(&commands_[Command::ToolsMenuJournal]);
}

void MainMenu::MakeViewMenu(QMenuBar& bar)
{
    QMenu* view = AddMenu(&bar, "ViewMenu", Message::ViewMenu);
    view->addAction(&commands_[Command::ViewMenuToolbar]);
    view->addAction(&commands_[Command::ViewMenuStatusBar]);
    view->addAction(&commands_[Command::ViewMenuTouchSize]);
    view->addAction(&commands_[Command::ViewMenuLineMonitor]);
    view->addSeparator();
    languages_ = AddMenu(view, "LanguageMenu", Message::LanguageMenu);
    connect(languages_, &QMenu::aboutToShow, languages_, [this] { ListLanguages(); });
}

void MainMenu::ListLanguages()
{
    languages_->clear();
    for (const auto& [code, name] : languages()) {
        // Each in its own language, for one who cannot read the present one.
        QAction* entry = languages_->addAction(ToQString(name));
        entry->setObjectName(QStringLiteral("Language") + ToQString(code));
        entry->setCheckable(true);
        entry->setChecked(code == language());
        connect(entry, &QAction::triggered, languages_,
                [this, chosen = code] { emit languageChosen(chosen); });
    }
}

void MainMenu::MakeGeneralMenus(QMenuBar& bar)
{
    QMenu* window = AddMenu(&bar, "WindowMenu", Message::WindowMenu);
    connect(window, &QMenu::aboutToShow, window, [this, window] {
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
        const QString folder =
            QFontMetrics(recent_->font()).elidedText(info.path(), Qt::ElideMiddle, FolderWidth);
        QString text = QStringLiteral("%1  %2  (%3)").arg(number).arg(info.fileName(), folder);
        text.replace('&', QStringLiteral("&&"));
        // The first nine are reached by their digit.
        QAction* entry = recent_->addAction(number < 10 ? '&' + text : text);
        connect(entry, &QAction::triggered, recent_, [this, path] { emit recentFileChosen(path); });
        ++number;
    }
    recent_->addSeparator();
    QAction* clear = recent_->addAction(clearText_);
    clear->setEnabled(!files.isEmpty());
    connect(clear, &QAction::triggered, this, &MainMenu::clearRecentChosen);
}

void MainMenu::Retranslate(const MessageCatalogue& catalogue)
{
    for (const Titled& row : titled_)
        row.menu->setTitle(ToQString(catalogue.Caption(row.caption)));
    const QString com = ToQString(catalogue.Caption(Message::CommunicationsLine));
    for (std::size_t i = 0; i < ports_.size(); ++i)
        ports_.at(i)->setText(com + QStringLiteral("&%1").arg(i + 1));
    clearText_ = ToQString(catalogue.Caption(Message::FileMenuRecentClear));
}

void MainMenu::ShowSetupEntries(bool shown)
{
    for (QAction* entry : setupEntries_)
        entry->setVisible(shown);
}

}  // namespace kelvora
