#include "windows/forms/MDIForm1.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QScreen>
#include <QStyle>
#include <QTimer>
#include <utility>

#include "layout/forms/StripView.h"
#include "layout/forms/frmConfig.h"
#include "platform/qt/Text.h"
#include "ports/Connection.h"
#include "windows/forms/Icons.h"

namespace kelvora {

namespace {

// Links and their drivers may still be at work when the last window goes.
constexpr std::chrono::milliseconds ClosingTime{2000};

constexpr QSize MainWindowSize(1000, 620);

// What the window system puts around a window, before it has done so.
QSize FrameRoom(const QStyle& style)
{
    const int title = style.pixelMetric(QStyle::PM_TitleBarHeight);
    return {title / 2, title + title / 2};
}

QStringList LocalFiles(const QMimeData& data)
{
    QStringList paths;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile())
            paths << url.toLocalFile();
    return paths;
}

}  // namespace

MDIForm1::MDIForm1(Program& program, const QString& configFolder, MachinePorts* machine)
    : program_(program),
      commands_(this),
      menu_(*menuBar(), commands_),
      area_(new QMdiArea(this)),
      start_(new StartPage(commands_, program.world.files, program.texts.Catalogue(), area_)),
      toolbar_(new MainToolbar(commands_, program.texts.Catalogue(), this)),
      status_(new StatusPanels(this)),
      operation_(program.operation, program.lines.Terminals(), program.texts, *status_, *this),
      lines_(program.desk, machine, *this),
      memory_(configFolder),
      setups_(*area_, program.desk, memory_),
      templates_(program.desk, setups_, *this),
      comparisons_(program.files, setups_),
      journal_(program.desk, setups_, comparisons_),
      series_(program.desk, setups_),
      recovery_(program.desk, program.world.recovery, setups_),
      help_(program.texts, program.language, [this] { return ActiveSetup(); })
{
    setObjectName(QStringLiteral("MDIForm1"));
    setWindowTitle(ToQString(ProductName));
    setWindowIcon(ProgramIcon());
    setAcceptDrops(true);
    setContextMenuPolicy(Qt::NoContextMenu);
    area_->setObjectName(QStringLiteral("SetupWindows"));
    area_->setBackground(palette().brush(QPalette::Window));
    // Every window keeps its own size: with many open, passing "maximized" on makes switching slow.
    area_->setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
    area_->viewport()->installEventFilter(this);
    setCentralWidget(area_);
    addToolBar(toolbar_);
    setStatusBar(status_);
    resize(MainWindowSize);
    memory_.RestoreWindow(*this);
    // The screen may be smaller than the one before, or its scaling larger.
    resize(size().boundedTo(screen()->availableGeometry().size() - FrameRoom(*style())));
    memory_.RestoreFolders(program_.main);
    memory_.RestoreLine(program_.main);
    ConnectFileCommands();
    ConnectLayoutCommands();
    ConnectLineCommands();
    ConnectFlashCommands();
    ConnectGeneralCommands();
    ConnectMenus();
    ConnectStartPage();
    status_->ShowOperation(ToQString(IdleText(program_.texts)));
    Retranslate();
    Refresh();
}

MDIForm1::~MDIForm1()
{
    // When the rest is gone already, the area tells of each window that goes with it, a window of a module
    // that was being placed in it, and the application of the focus.
    area_->disconnect(this);
    for (frmConfig* const setup : AllSetups())
        setup->disconnect(this);
    qApp->disconnect(this);
}

void MDIForm1::ConnectMenus()
{
    connect(area_, &QMdiArea::subWindowActivated, this, [this] {
        Refresh();
        if (frmConfig* setup = ActiveSetup()) {
            setup->FocusStrip();
            setup->Form_Activate();
        }
    });
    // A dialog has closed, or an operation has ended, when the focus comes back.
    connect(qApp, &QApplication::focusChanged, this, [this] {
        if (!waitingFiles_.isEmpty())
            QTimer::singleShot(0, this, [this] { OpenWaitingFiles(); });
    });
    connect(&setups_, &SetupWindows::windowAdded, this, &MDIForm1::Prepare);
    connect(&setups_, &SetupWindows::isLate, this, [this](const QString& paths) {
        status_->ShowHint(ToQString(program_.texts.Caption(Message::CardReading)) + ' ' + paths);
    });
    connect(&setups_, &SetupWindows::cameLate, this, [this](const QStringList& paths) {
        waitingFiles_ << paths;
        OpenWaitingFiles();
    });
    connect(&recovery_, &RecoveryForms::failed, status_, &StatusPanels::ShowHint);
    connect(&series_, &SeriesForms::ended, this, &QWidget::close);
    toolbar_->mayChooseDump = [this] { return ActiveSetup() != nullptr; };
    menu_.recentFiles = [this] { return memory_.RecentFiles(); };
    menu_.listWindows = [this](QMenu& menu) { setups_.List(menu); };
    menu_.listComparisons = [this](QMenu& menu) { comparisons_.List(menu); };
    menu_.isPortAvailable = [this](int port) { return program_.lines.IsAvailable(port); };
    menu_.languages = [this] { return program_.language.Offered(); };
    menu_.language = [this] { return program_.language.Code(); };
    connect(&menu_, &MainMenu::recentFileChosen, this,
            Reached([this](const QString& path) { setups_.OpenRecent(path); }));
    connect(&menu_, &MainMenu::clearRecentChosen, this, [this] {
        memory_.ClearRecentFiles();
        start_->ListRecentFiles();
    });
    connect(&menu_, &MainMenu::portChosen, this, Reached([this](int port) {
        if (frmConfig* setup = ActiveSetup())
            setup->SelectPort(static_cast<std::int16_t>(port));
        memory_.SaveLine(program_.main);
    }));
    connect(&menu_, &MainMenu::languageChosen, this,
            Reached([this](const std::string& language) { ChangeLanguage(language); }));
}

void MDIForm1::ConnectStartPage()
{
    start_->hide();
    start_->recentFiles = [this] { return memory_.RecentFiles(); };
    connect(start_, &StartPage::opened, this, [this](const QString& path) {
        setups_.OpenRecent(path);
        // One that was gone is no longer in the list.
        if (start_->isVisible())
            start_->ListRecentFiles();
    });
    connect(start_, &StartPage::taken, this, [this](const QString& path) {
        memory_.RemoveRecentFile(path);
        if (memory_.RecentFiles().isEmpty())
            ShowStartPage();
    });
}

void MDIForm1::ShowStartPage()
{
    start_->setGeometry(area_->rect());
    start_->raise();
    start_->show();
    start_->ListRecentFiles();
    start_->setFocus();
}

void MDIForm1::Prepare(frmConfig& setup)
{
    connect(setup.parentWidget(), &QObject::destroyed, this, &MDIForm1::Refresh, Qt::QueuedConnection);
    undoGroup_.addStack(&setup.UndoStack());
    recovery_.Watch(setup);
    connect(&setup, &frmConfig::changed, this, &MDIForm1::Refresh);
    connect(&setup, &frmConfig::fileChanged, this, [this, &setup] { setups_.Remember(setup); });
    connect(&setup, &frmConfig::interruptRequested, &operation_, &OperationView::Interrupt);
    connect(&setup, &frmConfig::hinted, this, &MDIForm1::ShowHint);
    connect(&setup, &frmConfig::moduleMenuRequested, this,
            [this](const QPoint& place) { menu_.OfModule().popup(place); });
}

void MDIForm1::OpenFiles(const QStringList& paths)
{
    if (closing_ != Closing::No)
        return;
    waitingFiles_ << paths;
    if (isMinimized())
        showNormal();
    activateWindow();
    raise();
    OpenWaitingFiles();
}

void MDIForm1::OpenWaitingFiles()
{
    // Under an open dialog, or while something runs, another window would come to the front: they wait.
    const bool mayOpen = closing_ == Closing::No && commands_[Command::FileMenuOpen].isEnabled() &&
                         !QApplication::activeModalWidget();
    if (mayOpen && !waitingFiles_.isEmpty())
        setups_.OpenFiles(std::exchange(waitingFiles_, {}));
}

void MDIForm1::Retranslate()
{
    commands_.Retranslate(program_.texts.Catalogue());
    menu_.Retranslate(program_.texts.Catalogue());
    toolbar_->Retranslate();
    status_->Retranslate(program_.texts.Catalogue());
    start_->Retranslate();
    lines_.Retranslate();
    setups_.Retranslate();
    comparisons_.Retranslate();
    journal_.Retranslate();
    series_.Retranslate();
}

void MDIForm1::ChangeLanguage(const std::string& language)
{
    const bool idle = IsIdle();
    if (language == program_.language.Code() || !program_.language.Change(language))
        return;
    // The help is opened anew in the new language.
    help_.Close();
    emit languageChanged();
    if (idle)
        status_->ShowOperation(ToQString(IdleText(program_.texts)));
    Retranslate();
    Refresh();
}

void MDIForm1::Refresh()
{
    frmConfig* setup = ActiveSetup();
    const bool isEmpty = area_->subWindowList().isEmpty();
    if (isEmpty && start_->isHidden())
        ShowStartPage();
    else if (!isEmpty)
        start_->hide();
    comparisons_.Refresh();
    journal_.Refresh();
    undoGroup_.setActiveStack(setup ? &setup->UndoStack() : nullptr);
    menu_.ShowSetupEntries(setup != nullptr);
    const PosCfg& settings = setup ? setup->Session().settings : program_.main;
    // One scan at a time, also while it has yet to begin.
    const bool hasLink = program_.lines.HasLink() && !setups_.HasScanPending();
    const bool canScan = hasLink && AllowsScan(settings.ConnectionMode);
    CommandSituation nothingOpen;
    nothingOpen.busy = program_.operation.IsBusy();
    nothingOpen.canScan = hasLink;
    const CommandState state = setup ? setup->State(canScan) : CommandStateOf(nothingOpen);
    commands_.Apply(state);
    menu_.Apply(state);
    for (frmConfig* const each : AllSetups())
        each->Strip().AllowAdding(!program_.operation.IsBusy());
    menu_.ShowPort(settings.CommsPort);
    status_->ShowMode(ToQString(ModeText(settings.ConnectionMode)));
    status_->ShowPort(ToQString(PortText(settings)));
    status_->ShowSimulated(program_.lines.IsSimulated(settings.CommsPort));
    status_->Need(program_.operation.IsBusy() || (setup && setup->IsPlacing()));
    commands_[Command::CommunicationsMenuPractice].setChecked(program_.lines.HasSimulation());
    // The wizard is busy and says so with its status alone.
    if (program_.operation.Name().empty())
        status_->ShowOperation(program_.operation.IsBusy() ? QString() : ToQString(IdleText(program_.texts)));
    if (!setup) {
        status_->ShowStatus(QString());
        return;
    }
    if (program_.operation.IsBusy()) {
        status_->ShowStatus(ToQString(program_.operation.Status()));
        return;
    }
    // The button that had it may have been switched off meanwhile, which gives it to the frame around.
    const QWidget* const focused = QApplication::focusWidget();
    if (isActiveWindow() && (!focused || focused == setup->parentWidget()))
        setup->FocusStrip();
    commands_.NameUndo(program_.texts.Catalogue(), setup->UndoName(), setup->RedoName());
    status_->ShowStatus(setup->IsPlacing() ? ToQString(program_.texts.Caption(Message::PlacingHint))
                                           : PathToQString(setup->Session().File().path));
}

void MDIForm1::ShowPractice()
{
    Refresh();
    series_.Retranslate();
    ShowHint(program_.lines.HasSimulation() ? Message::PracticeBegun : Message::PracticeEnded);
}

void MDIForm1::ShowHint(const MessageId& hint, const QString& what)
{
    status_->ShowHint((ToQString(program_.texts.Word(hint)) + what).trimmed());
}

bool MDIForm1::IsIdle() const
{
    const QString operation = status_->Operation().trimmed();
    return !program_.operation.IsBusy() &&
           (operation.isEmpty() || operation == ToQString(IdleText(program_.texts)).trimmed());
}

bool MDIForm1::MayShutDown()
{
    if (IsIdle())
        return series_.MayClose() && setups_.MayCloseAll();
    ShowHint(Message::NotClosedHint);
    return false;
}

void MDIForm1::ShutDown()
{
    closing_ = Closing::Waiting;
    memory_.SaveWindow(*this);
    memory_.SaveFolders(program_.main);
    recovery_.End();
    emit shutdownBegun();
    for (QWidget* const window : QApplication::topLevelWidgets())
        window->hide();
    program_.world.eventLoop.After(ClosingTime, [window = QPointer<MDIForm1>(this)] {
        if (window)
            window->EndShutdown();
    });
}

void MDIForm1::EndShutdown()
{
    for (SerialPort* port : program_.lines.AllPorts())
        if (port && port->IsOpen())
            port->Close();
    status_->ShowStatus(QString());
    setups_.CloseAllUnasked();
    closing_ = Closing::Done;
    close();
    emit closed();
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
    if (LocalFiles(*event->mimeData()).isEmpty())
        return;
    event->acceptProposedAction();
    start_->ShowDrop(true);
}

void MDIForm1::dragLeaveEvent(QDragLeaveEvent* /*event*/)
{
    start_->ShowDrop(false);
}

void MDIForm1::dropEvent(QDropEvent* event)
{
    start_->ShowDrop(false);
    // A copy: the source must not take the file away. Opening may ask questions, and the source waits for
    // this.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    QTimer::singleShot(0, this, [this, files = LocalFiles(*event->mimeData())] { OpenFiles(files); });
}

bool MDIForm1::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::PaletteChange)
        area_->setBackground(palette().brush(QPalette::Window));
    else if (event->type() == QEvent::Resize)
        start_->setGeometry(area_->rect());
    return QMainWindow::eventFilter(watched, event);
}

void MDIForm1::ShowAbout()
{
    const MessageCatalogue& catalogue = program_.texts.Catalogue();
    const std::string text = catalogue.Caption(Message::AboutText) + "\r\n" +
                             catalogue.Word(Message::Version) + KELVORA_VERSION "\r\n" +
                             catalogue.Caption(Message::AboutLegal);
    program_.texts.Tell(text, {BoxIcon::Information});
}

}  // namespace kelvora
