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

void MainMenu::Add(QMenu& menu, std::initializer_list<Command> commands)
{
    for (const Command command : commands)
        menu.addAction(&commands_[command]);
}

void MainMenu::AddForSetup(QMenu& menu, std::initializer_list<Command> commands)
{
    Add(menu, commands);
    for (const Command command : commands)
        setupEntries_.push_back(&commands_[command]);
}

void MainMenu::MakeFileMenu(QMenuBar& bar)
{
    QMenu* file = AddMenu(&bar, "FileMenu", Message::FileMenu);
    Add(*file, {Command::FileMenuNew, Command::FileMenuNewFromTemplate, Command::FileMenuOpen});
    recent_ = AddMenu(file, "FileMenuRecent", Message::FileMenuRecent);
    connect(recent_, &QMenu::aboutToShow, recent_, [this] { ListRecentFiles(); });
    AddForSetup(*file, {Command::FileMenuSave, Command::FileMenuSaveAs, Command::FileMenuSaveAsTemplate,
                        Command::FileMenuClose});
    setupEntries_.push_back(file->addSeparator());
    AddForSetup(*file, {Command::FileMenuPrint, Command::FileMenuPrintPreview, Command::FileMenuExport});
    compare_ = AddMenu(file, "FileMenuCompare", Message::CompareMenu);
    setupEntries_.push_back(compare_->menuAction());
    connect(compare_, &QMenu::aboutToShow, compare_, [this] {
        compare_->clear();
        listComparisons(*compare_);
    });
    file->addSeparator();
    Add(*file, {Command::FileMenuScan});
    file->addSeparator();
    Add(*file, {Command::FileMenuExit});
}

void MainMenu::MakeSetupMenus(QMenuBar& bar)
{
    QMenu* edit = AddMenu(&bar, "EditMenu", Message::EditMenu);
    Add(*edit, {Command::EditMenuUndo, Command::EditMenuRedo});
    edit->addSeparator();
    Add(*edit, {Command::EditMenuCopy, Command::EditMenuPaste});
    QMenu* layout = AddMenu(&bar, "LayoutMenu", Message::LayoutMenu);
    add_ = AddMenu(layout, "LayoutMenuAdd", Message::LayoutMenuAdd);
    Add(*add_, {Command::LayoutMenuAddKBMASTER, Command::LayoutMenuAddKB64, Command::LayoutMenuAddMCR,
                Command::LayoutMenuAddICCR});
    Add(*layout, {Command::LayoutMenuDel, Command::LayoutMenuMove});
    layout->addSeparator();
    Add(*layout, {Command::LayoutMenuOptions});
    setupEntries_.push_back(edit->menuAction());
    setupEntries_.push_back(layout->menuAction());
    module_ = new QMenu(&bar);
    module_->setObjectName(QStringLiteral("ModuleMenu"));
    titled_.push_back({module_, Message::LayoutMenu});
    module_->addActions(layout->actions());
    module_->addSeparator();
    Add(*module_, {Command::EditMenuCopy, Command::EditMenuPaste});
}

void MainMenu::MakeCommunicationsMenu(QMenuBar& bar)
{
    QMenu* menu = AddMenu(&bar, "CommunicationsMenu", Message::CommunicationsMenu);
    Add(*menu, {Command::CommunicationsMenuPosConnection, Command::CommunicationsMenuKeybConnection});
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
            ShowPort(port);
            emit portChosen(port);
        });
        ports_.at(i) = line;
    }
    connect(lines_, &QMenu::aboutToShow, lines_, [this] {
        for (std::size_t i = 0; i < ports_.size(); ++i)
            ports_.at(i)->setEnabled(isPortAvailable(static_cast<int>(i) + 1));
    });
    AddForSetup(*menu, {Command::CommunicationsMenuSettings});
    Add(*menu, {Command::CommunicationsMenuPorts});
    menu->addSeparator();
    Add(*menu, {Command::CommunicationsMenuPractice});
    // Without a setup window only the ports themselves can be chosen.
    setupEntries_.push_back(lines_->menuAction());
}

void MainMenu::Apply(const CommandState& state)
{
    recent_->setEnabled(state.program);
    compare_->setEnabled(state.setup);
    add_->setEnabled(state.layout.add);
    lines_->setEnabled(state.setup);
    languages_->setEnabled(state.program);
    dump_->setEnabled(state.line);
}

void MainMenu::ShowPort(int port)
{
    for (std::size_t i = 0; i < ports_.size(); ++i)
        ports_.at(i)->setChecked(static_cast<int>(i) + 1 == port);
}

void MainMenu::MakeToolsMenu(QMenuBar& bar)
{
    QMenu* tools = AddMenu(&bar, "ToolsMenu", Message::ToolsMenu);
    Add(*tools, {Command::ToolsMenuRescanLine});
    tools->addSeparator();
    Add(*tools, {Command::ToolsMenuFlashDownload, Command::ToolsMenuFlashVerify});
    dump_ = AddMenu(tools, "ToolsMenuFlashDump", Message::ToolsMenuFlashDump);
    Add(*dump_, {Command::ToolsMenuFlashDumpSetup, Command::ToolsMenuFlashDumpUpload});
    tools->addSeparator();
    Add(*tools, {Command::ToolsMenuFlashRestore, Command::ToolsMenuFlashBackups});
    tools->addSeparator();
    Add(*tools, {Command::EpromWizard});
    tools->addSeparator();
    // All of it but the rest works on the line of a setup window.
    for (QAction* entry : tools->actions())
        setupEntries_.push_back(entry);
    Add(*tools, {Command::ToolsMenuSeries, Command::ToolsMenuJournal});
}

void MainMenu::MakeViewMenu(QMenuBar& bar)
{
    QMenu* view = AddMenu(&bar, "ViewMenu", Message::ViewMenu);
    Add(*view, {Command::ViewMenuToolbar, Command::ViewMenuStatusBar, Command::ViewMenuTouchSize,
                Command::ViewMenuLineMonitor});
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
        Add(*window, {Command::WindowMenuNext, Command::WindowMenuPrevious, Command::WindowMenuCascade,
                      Command::WindowMenuTile, Command::WindowMenuCloseAll});
        window->addSeparator();
        listWindows(*window);
    });
    setupEntries_.push_back(window->menuAction());
    QMenu* help = AddMenu(&bar, "HelpMenu", Message::HelpMenu);
    Add(*help, {Command::HelpMenuGuide});
    help->addSeparator();
    Add(*help, {Command::HelpMenuAbout});
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
