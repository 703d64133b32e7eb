#include "app/forms/MDIForm1.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QPainter>

#include "app/ShowMessage.h"
#include "app/forms/HelpWindow.h"
#include "app/forms/Icons.h"
#include "layout/forms/frmConfig.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

// Channels and their drivers may still be at work when the last window goes.
constexpr std::chrono::milliseconds ClosingTime{2000};

constexpr QSize InitialSize(980, 620);

QString ConnectionText(ConnectionMode mode)
{
    return mode == ConnectionMode::Keyboard ? QStringLiteral(" KEYB") : QStringLiteral(" POS");
}

QString PortText(const PosCfg& settings)
{
    return QStringLiteral(" COM%1: %2").arg(settings.CommsPort).arg(ToQString(settings.PortSettings));
}

}  // namespace

MDIForm1::MDIForm1(Program& program, const QString& configFolder)
    : program_(program),
      commands_(this),
      menu_(*menuBar(), commands_),
      area_(new QMdiArea(this)),
      toolbar_(new MainToolbar(commands_, this)),
      status_(new StatusPanels(this)),
      memory_(configFolder)
{
    setObjectName(QStringLiteral("MDIForm1"));
    setWindowTitle(ToQString(ProductName));
    setWindowIcon(ProgramIcon());
    setAcceptDrops(true);
    setContextMenuPolicy(Qt::NoContextMenu);
    area_->setObjectName(QStringLiteral("SetupWindows"));
    area_->setBackground(palette().brush(QPalette::Window));
    area_->viewport()->installEventFilter(this);
    setCentralWidget(area_);
    addToolBar(toolbar_);
    setStatusBar(status_);
    resize(InitialSize);
    memory_.RestoreWindow(*this);
    memory_.RestoreFolders(program_.main);
    Connect();
    Retranslate();
    Refresh();
}

MDIForm1::~MDIForm1()
{
    // The area tells of each window that goes with it, when the rest is gone already.
    area_->disconnect(this);
    delete help_;
}

void MDIForm1::Connect()
{
    for (std::size_t i = 0; i < CommandCount; ++i)
        addAction(&commands_[static_cast<Command>(i)]);
    ConnectFileCommands();
    ConnectWindowCommands();
    connect(area_, &QMdiArea::subWindowActivated, this, [this] { Refresh(); });
    toolbar_->mayChooseDump = [this] { return ActiveSetup() != nullptr; };
    menu_.recentFiles = [this] { return memory_.RecentFiles(); };
    menu_.openRecent = [this](const QString& path) { OpenRecent(path); };
    menu_.clearRecent = [this] { memory_.ClearRecentFiles(); };
    menu_.listWindows = [this](QMenu& menu) { ListWindows(menu); };
}

void MDIForm1::ConnectFileCommands()
{
    const auto on = [this](Command command, auto action) {
        connect(&commands_[command], &QAction::triggered, this, action);
    };
    on(Command::FileMenuNew, [this] { NewSetup(SetupMode::New); });
    on(Command::FileMenuOpen, [this] { NewSetup(SetupMode::Open); });
    on(Command::FileMenuSave, [this] { WithSetup(&frmConfig::FileMenuSave_Click); });
    on(Command::FileMenuSaveAs, [this] { WithSetup(&frmConfig::FileMenuSaveAs_Click); });
    on(Command::FileMenuClose, [this] { area_->closeActiveSubWindow(); });
    on(Command::FileMenuExit, [this] { close(); });
    on(Command::EditMenuUndo, [this] {
        if (frmConfig* setup = ActiveSetup())
            setup->UndoStack().undo();
    });
    on(Command::EditMenuRedo, [this] {
        if (frmConfig* setup = ActiveSetup())
            setup->UndoStack().redo();
    });
}

void MDIForm1::ConnectWindowCommands()
{
    const auto on = [this](Command command, auto action) {
        connect(&commands_[command], &QAction::triggered, this, action);
    };
    on(Command::ViewMenuToolbar, [this](bool shown) { toolbar_->setVisible(shown); });
    on(Command::ViewMenuStatusBar, [this](bool shown) { status_->setVisible(shown); });
    on(Command::WindowMenuCascade, [this] { area_->cascadeSubWindows(); });
    on(Command::WindowMenuTile, [this] { area_->tileSubWindows(); });
    on(Command::WindowMenuNext, [this] { area_->activateNextSubWindow(); });
    on(Command::WindowMenuPrevious, [this] { area_->activatePreviousSubWindow(); });
    on(Command::WindowMenuCloseAll, [this] { area_->closeAllSubWindows(); });
    on(Command::HelpMenuGuide, [this] { ShowHelp(); });
    on(Command::HelpMenuAbout, [this] { ShowAbout(); });
    commands_[Command::ViewMenuToolbar].setChecked(toolbar_->isVisibleTo(this));
    commands_[Command::ViewMenuStatusBar].setChecked(true);
}

void MDIForm1::Retranslate()
{
    commands_.Retranslate(program_.catalogue);
    menu_.Retranslate(program_.catalogue);
    toolbar_->Retranslate(program_.catalogue);
    status_->Retranslate(program_.catalogue);
    status_->ShowOperation(ToQString(program_.IdleText()));
    for (frmConfig* setup : SetupWindows())
        setup->Retranslate();
}

frmConfig* MDIForm1::ActiveSetup() const
{
    const QMdiSubWindow* active = area_->currentSubWindow();
    return active ? dynamic_cast<frmConfig*>(active->widget()) : nullptr;
}

std::vector<frmConfig*> MDIForm1::SetupWindows() const
{
    std::vector<frmConfig*> windows;
    for (const QMdiSubWindow* window : area_->subWindowList())
        if (auto* setup = dynamic_cast<frmConfig*>(window->widget()))
            windows.push_back(setup);
    return windows;
}

void MDIForm1::Refresh()
{
    frmConfig* setup = ActiveSetup();
    // Scanning waits for a line: until the program has one, its entries and all that follow it stay disabled.
    constexpr bool CanScan = false;
    commands_.Apply(setup ? setup->Commands(CanScan) : EnabledCommands(CommandSituation{}));
    menu_.ShowSetupEntries(setup != nullptr);
    const PosCfg& settings = setup ? setup->Session().settings : program_.main;
    status_->ShowMode(setup ? ConnectionText(settings.ConnectionMode) : QString());
    status_->ShowPort(PortText(settings));
    status_->ShowStatus(setup ? PathToQString(setup->Session().File().path) : QString());
    if (setup)
        setup->FocusStrip();
    else
        area_->viewport()->update();
}

void MDIForm1::NewSetup(SetupMode mode, const std::optional<std::string>& path)
{
    program_.setupMode = mode;
    auto window = std::make_unique<frmConfig>(program_);
    const bool loaded = window->Form_Load(path);
    Remember(*window);
    if (!loaded)
        return;
    // A file that is open in another window is not shown twice.
    const std::string& file = window->Session().File().path;
    if (!file.empty() && BringForward(file))
        return;
    ShowSetup(std::move(window));
}

void MDIForm1::ShowSetup(std::unique_ptr<frmConfig> window)
{
    frmConfig* setup = window.release();
    QMdiSubWindow* frame = area_->addSubWindow(setup);
    frame->setWindowIcon(ProgramIcon());
    setup->onChange = [this, setup] {
        Remember(*setup);
        Refresh();
    };
    setup->onInterrupt = [this] { Interrupt(); };
    // Large is what a technician wants to see; one who has arranged the windows keeps the arrangement.
    const auto frames = area_->subWindowList();
    const bool arranged = frames.size() > 1 && !frames.constFirst()->isMaximized();
    if (arranged)
        frame->show();
    else
        frame->showMaximized();
    Refresh();
}

bool MDIForm1::BringForward(const std::string& path)
{
    const QString wanted = QFileInfo(PathToQString(path)).canonicalFilePath();
    for (QMdiSubWindow* frame : area_->subWindowList()) {
        const auto* setup = dynamic_cast<frmConfig*>(frame->widget());
        if (!setup || wanted.isEmpty())
            continue;
        const std::string& open = const_cast<frmConfig*>(setup)->Session().File().path;
        if (!open.empty() && QFileInfo(PathToQString(open)).canonicalFilePath() == wanted) {
            area_->setActiveSubWindow(frame);
            return true;
        }
    }
    return false;
}

void MDIForm1::OpenFiles(const QStringList& paths)
{
    if (closing_ != Closing::No)
        return;
    for (const QString& path : paths) {
        const std::string file = PathFromQString(QFileInfo(path).absoluteFilePath());
        if (!BringForward(file))
            NewSetup(SetupMode::Open, file);
    }
    if (isMinimized())
        showNormal();
    activateWindow();
    raise();
}

void MDIForm1::OpenRecent(const QString& path)
{
    if (!QFileInfo::exists(path)) {
        memory_.RemoveRecentFile(path);
        program_.Show(Message::NotFound, {BoxIcon::Exclamation}, PathFromQString(path));
        return;
    }
    OpenFiles({path});
}

void MDIForm1::Remember(frmConfig& window)
{
    const PosCfg& settings = window.Session().settings;
    program_.main.InInitDir = settings.InInitDir;
    program_.main.InFilterIndex = settings.InFilterIndex;
    program_.main.OutInitDir = settings.OutInitDir;
    program_.main.OutFilterIndex = settings.OutFilterIndex;
    if (!window.Session().File().path.empty())
        memory_.AddRecentFile(PathToQString(window.Session().File().path));
}

void MDIForm1::WithSetup(void (frmConfig::*command)())
{
    if (frmConfig* setup = ActiveSetup())
        (setup->*command)();
}

void MDIForm1::ListWindows(QMenu& menu)
{
    int number = 1;
    for (QMdiSubWindow* frame : area_->subWindowList()) {
        QString title = frame->windowTitle();
        title.replace(QStringLiteral("[*]"), frame->isWindowModified() ? QStringLiteral("*") : QString());
        title.replace('&', QStringLiteral("&&"));
        QAction* entry = menu.addAction(
            (number < 10 ? QStringLiteral("&%1  %2") : QStringLiteral("%1  %2")).arg(number).arg(title));
        entry->setCheckable(true);
        entry->setChecked(frame == area_->currentSubWindow());
        connect(entry, &QAction::triggered, frame, [this, frame] { area_->setActiveSubWindow(frame); });
        ++number;
    }
}

bool MDIForm1::MayShutDown()
{
    const QString operation = status_->Operation().trimmed();
    if (!operation.isEmpty() && operation != ToQString(program_.IdleText()).trimmed())
        return false;
    // All are asked before any closes, so that a Cancel leaves everything as it was.
    for (frmConfig* setup : SetupWindows()) {
        if (setup->IsChanged())
            area_->setActiveSubWindow(dynamic_cast<QMdiSubWindow*>(setup->parentWidget()));
        if (!setup->MayClose())
            return false;
    }
    return true;
}

void MDIForm1::ShutDown()
{
    closing_ = Closing::Waiting;
    memory_.SaveWindow(*this);
    memory_.SaveFolders(program_.main);
    if (onShutdown)
        onShutdown();
    if (help_)
        help_->hide();
    hide();
    program_.world.eventLoop.After(ClosingTime, [window = QPointer<MDIForm1>(this)] {
        if (!window)
            return;
        for (frmConfig* setup : window->SetupWindows())
            setup->CloseUnasked();
        window->area_->closeAllSubWindows();
        window->status_->ShowStatus(QString());
        window->closing_ = Closing::Done;
        window->close();
        if (window->onClosed)
            window->onClosed();
    });
}

void MDIForm1::closeEvent(QCloseEvent* event)
{
    if (closing_ == Closing::Done) {
        event->accept();
        return;
    }
    event->ignore();
    if (closing_ == Closing::No && MayShutDown())
        ShutDown();
}

void MDIForm1::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls() && !program_.busy)
        event->acceptProposedAction();
}

void MDIForm1::dropEvent(QDropEvent* event)
{
    QStringList paths;
    for (const QUrl& url : event->mimeData()->urls())
        if (url.isLocalFile())
            paths << url.toLocalFile();
    event->acceptProposedAction();
    OpenFiles(paths);
}

bool MDIForm1::eventFilter(QObject* watched, QEvent* event)
{
    const bool handled = QMainWindow::eventFilter(watched, event);
    if (event->type() == QEvent::PaletteChange)
        area_->setBackground(palette().brush(QPalette::Window));
    if (event->type() != QEvent::Paint || watched != area_->viewport() || !area_->subWindowList().isEmpty())
        return handled;
    QPainter painter(area_->viewport());
    painter.fillRect(area_->viewport()->rect(), palette().brush(QPalette::Window));
    QColor faint = palette().color(QPalette::WindowText);
    faint.setAlphaF(0.75F);
    painter.setPen(faint);
    painter.drawText(area_->viewport()->rect().adjusted(40, 0, -40, 0), Qt::AlignCenter | Qt::TextWordWrap,
                     ToQString(program_.catalogue.Caption(Message::EmptyMain)));
    return true;
}

void MDIForm1::ShowHelp()
{
    if (!help_)
        help_ = new HelpWindow(program_.catalogue,
                               PathToQString(HelpFolder(program_.folders, program_.catalogue.Language())));
    help_->ShowPage(ActiveSetup() ? QStringLiteral("setup.html") : QStringLiteral("index.html"));
    help_->show();
    help_->raise();
    help_->activateWindow();
}

void MDIForm1::ShowAbout()
{
    const MessageCatalogue& catalogue = program_.catalogue;
    const std::string text = catalogue.Caption(Message::AboutText) + "\r\n" +
                             catalogue.Word(Message::Version) + KELVORA_VERSION "\r\n" +
                             catalogue.Caption(Message::AboutLegal);
    program_.world.prompt.Show(ProductName, text, {BoxIcon::Information});
}

void MDIForm1::Interrupt()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    program_.interruptionRequested = true;
    program_.Show(Message::Interruption, {BoxIcon::Information});
}

}  // namespace kelvora
