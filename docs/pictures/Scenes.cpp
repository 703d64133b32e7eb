#include "Scenes.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QTableView>
#include <QTemporaryDir>
#include <array>
#include <chrono>
#include <memory>
#include <stdexcept>

#include "bench/FreshLine.h"
#include "bench/SimulatedLine.h"
#include "bench/SimulatedPort.h"
#include "comms/forms/LineMonitorWindow.h"
#include "comms/forms/frmAbort.h"
#include "eeprom/forms/frmEeprom.h"
#include "fakes/FakeEventLoop.h"
#include "fakes/FakeFileDialogs.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakeLineClock.h"
#include "fakes/FakePrompt.h"
#include "fakes/FakeSerialDevices.h"
#include "fakes/FakeSeriesRunner.h"
#include "fakes/MemoryJournal.h"
#include "journal/forms/JournalWindow.h"
#include "keymap/forms/frmKeyb.h"
#include "layout/forms/StripView.h"
#include "layout/forms/frmConfig.h"
#include "picture/forms/SetupCards.h"
#include "picture/forms/SetupsDialog.h"
#include "platform/posix/PosixFiles.h"
#include "platform/qt/Text.h"
#include "ports/PortNames.h"
#include "series/forms/SeriesWindow.h"
#include "setup/Options.h"
#include "windows/Language.h"
#include "windows/forms/MDIForm1.h"

namespace kelvora {

namespace {

using std::chrono::milliseconds;

/// Wide enough for the toolbar in every language; a page of the help shows it a little smaller.
constexpr QSize WindowSize(900, 520);

constexpr const char* DataFolder = "/home/shop/.local/share/Kelvora";

/// The sheet is taller than a window; its numbers can still be read.
constexpr int SheetWidth = 620;

// Virtual time, in which Qt's own events happen too.
class PictureLoop final : public FakeEventLoop {
public:
    explicit PictureLoop(const Viewer& viewer) : viewer_(viewer) {}

    void Yield() override
    {
        QCoreApplication::processEvents();
        FakeEventLoop::Yield();
        viewer_.TimeIs(Now() - start_);
    }

private:
    const Viewer& viewer_;
    Time start_ = Now();
};

std::array<SerialDevice, 2> Adapters()
{
    return {SerialDevice{"/dev/serial/by-id/usb-adapter-A1", "/dev/ttyUSB0", "USB serial adapter", "", "A1"},
            SerialDevice{"/dev/ttyS0", "/dev/ttyS0", "", "", ""}};
}

FakeFiles FilesWithPort()
{
    FakeFiles files;
    files.content["/home/shop/.config/Kelvora/ports.ini"] =
        "[PORTS]\nCOM1 = /dev/serial/by-id/usb-adapter-A1\n";
    return files;
}

template <class Widget>
Widget& Find(QWidget& form, const char* name)
{
    auto* const widget = form.findChild<Widget*>(QLatin1String(name));
    if (!widget)
        throw std::runtime_error(std::string(name) + ": no such control");
    return *widget;
}

class Studio {
public:
    Studio(const std::string& language, const SceneFolders& folders, const Viewer& viewer)
        : folders_(folders),
          viewer_(viewer),
          names_(files_, "/home/shop/.config/Kelvora/ports.ini", {}),
          program_({files_, prompt_, dialogs_, loop_, {&port_}, &kept_.journal, DataFolder},
                   {PathFromQString(folders.program), PathFromQString(folder_.path())})
    {
        for (const SerialDevice& adapter : Adapters())
            devices_.devices.push_back(adapter);
        using namespace std::chrono_literals;
        kept_.now = std::chrono::sys_days(2026y / std::chrono::March / 9d) + 7h + 5min;
        const auto catalogue =
            LoadCatalogue(PosixFiles(), prompt_, {PathFromQString(folders.program), {}}, language);
        if (!catalogue)
            throw std::runtime_error(prompt_.shown.empty() ? language : prompt_.shown.back().body);
        program_.texts.Speak(*catalogue);
        machine_ = std::make_unique<MachinePorts>(MachinePorts{names_, devices_});
        window_ = std::make_unique<MDIForm1>(program_, folder_.path(), machine_.get());
        window_->resize(WindowSize);
        window_->show();
        QApplication::setActiveWindow(window_.get());
    }

    void TakeStart();
    void TakeSetup();
    void TakePlacing();
    void TakeKeys();
    void TakePaper();
    void TakeLine();
    void TakeFlash();
    void TakeWizard();
    void TakeSeries();
    void TakeJournal();

private:
    void TakeWizardPages(QWidget& wizard);
    void Run(Command command)
    {
        QApplication::setActiveWindow(window_.get());
        window_->Actions()[command].trigger();
        loop_.Pass(milliseconds(0));
    }
    void TakeDialogOf(Command command, const QString& name)
    {
        viewer_.TakeDialog([&] { Run(command); }, [&](QWidget& dialog) { viewer_.Take(dialog, name); });
    }
    static void ReadCards(QWidget& window)
    {
        const auto& cards = Find<SetupCards>(window, "SetupCards");
        while (cards.IsReading())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    // On a busy machine the file may come later.
    void Open(const QString& path)
    {
        window_->OpenFiles({path});
        while (!window_->ActiveSetup())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    StripView& Strip() { return window_->ActiveSetup()->Strip(); }
    SetupSession& Session() { return window_->ActiveSetup()->Session(); }

    QTemporaryDir folder_;
    SceneFolders folders_;
    const Viewer& viewer_;
    MemoryJournal kept_;
    FakeFiles files_ = FilesWithPort();
    FakePrompt prompt_;
    FakeFileDialogs dialogs_;
    FakeSerialDevices devices_;
    PictureLoop loop_{viewer_};
    bench::FakeLineClock clock_{loop_};
    bench::SimulatedLine line_{clock_, bench::FreshLine({bench::Module::KM096, bench::Module::KM064,
                                                         bench::Module::MCR123, bench::Module::ICCR})};
    bench::SimulatedPort port_{line_, "/dev/ttyUSB0"};
    PortNames names_;
    std::unique_ptr<MachinePorts> machine_;
    Program program_;
    std::unique_ptr<MDIForm1> window_;
};

// Files that were opened before, one of which is gone.
void Studio::TakeStart()
{
    for (const char* const name : {"master-mcr.dat", "key-types.dat", "all-four.dat"}) {
        files_.content[std::string("/home/shop/") + name] =
            PosixFiles().Read(PathFromQString(folders_.examples) + '/' + name);
        Open(QStringLiteral("/home/shop/") + QLatin1String(name));
        Run(Command::FileMenuClose);
        loop_.Pass(milliseconds(0));
    }
    files_.content.erase("/home/shop/key-types.dat");
    ReadCards(*window_);
    viewer_.Take(*window_, "start");
    const std::string own = std::string(DataFolder) + "/templates/corner shop.dat";
    files_.content[own] = files_.content["/home/shop/all-four.dat"];
    for (const char* const name : {"KM096.dat", "KM096+MCR.dat"})
        files_.content[PathFromQString(folders_.program) + "/templates/" + name] =
            PosixFiles().Read(PathFromQString(folders_.program) + "/templates/" + name);
    viewer_.TakeDialog([&] { Run(Command::FileMenuNewFromTemplate); },
                       [&](QWidget& dialog) {
                           ReadCards(dialog);
                           viewer_.Take(dialog, "templates");
                       });
}

void Studio::TakeSetup()
{
    const std::string till = "/home/shop/till.dat";
    files_.content[till] = PosixFiles().Read(PathFromQString(folders_.examples) + "/all-four.dat");
    Open(PathToQString(till));
    viewer_.Take(*window_, "main");
    Strip().Button(StripButton::MCR).setFocus();
    TakeDialogOf(Command::LayoutMenuOptions, "options");
}

// The third module on has a choice of places.
void Studio::TakePlacing()
{
    for (const Command add : {Command::FileMenuNew, Command::LayoutMenuAddKBMASTER,
                              Command::LayoutMenuAddKB64, Command::LayoutMenuAddMCR})
        Run(add);
    viewer_.Take(*window_, "placing");
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(&Strip(), &escape);
    prompt_.answers = {Answer::No};
    Run(Command::FileMenuClose);
}

// The same setup twice, some keys and an option apart.
void Studio::TakePaper()
{
    NamedSetup before{"till.dat", Session().document};
    NamedSetup after{"till-2.dat", Session().document};
    for (ModuleRecord& record : after.document.Modules) {
        if (record.Kind == ModuleKind::KM064)
            record.KeyMap.replace(0, 3, "010");
        if (record.Kind == ModuleKind::MCR)
            record.Options.replace(Options::AutoreadAt, Options::Off.size(), Options::Off);
    }
    SetupsDialog comparison(program_.texts.Catalogue(), std::move(before), std::move(after), window_.get());
    comparison.show();
    viewer_.Take(comparison, "setups");
    const std::string sheet = "/home/shop/till.png";
    dialogs_.choices = {{sheet, "/home/shop", 2}};
    Run(Command::FileMenuExport);
    const QImage picture = QImage::fromData(QByteArray::fromStdString(files_.content.at(sheet)), "PNG");
    viewer_.Keep(picture.scaledToWidth(SheetWidth, Qt::SmoothTransformation), "sheet");
}

void Studio::TakeKeys()
{
    viewer_.TakeDialog([&] { Strip().Button(StripButton::Master).click(); },
                       [&](QWidget& form) {
                           // Some keys that are not what they were at first: a double one and a
                           // quadruple one.
                           const auto press = [&](Qt::Key key, const QString& text) {
                               QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
                               QCoreApplication::sendEvent(form.focusWidget(), &event);
                           };
                           for (int step = 0; step < 4; ++step)
                               press(Qt::Key_Down, {});
                           press(Qt::Key_2, QStringLiteral("2"));
                           for (int step = 0; step < 3; ++step)
                               press(Qt::Key_Right, {});
                           press(Qt::Key_4, QStringLiteral("4"));
                           viewer_.Take(form, "keys");
                       });
}

void Studio::TakeLine()
{
    TakeDialogOf(Command::CommunicationsMenuPorts, "ports");
    TakeDialogOf(Command::CommunicationsMenuSettings, "settings");
    Run(Command::ViewMenuLineMonitor);
    loop_.After(milliseconds(4000), [&] {
        viewer_.Take(*window_, "scan");
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(window_.get(), &escape);
        auto* const abort = window_->findChild<frmAbort*>();
        viewer_.Take(*abort, "stop");
        Find<QAbstractButton>(*abort, "ContinueCommand").click();
    });
    Run(Command::FileMenuScan);
    for (QWidget* const widget : QApplication::topLevelWidgets())
        if (auto* const monitor = dynamic_cast<LineMonitorWindow*>(widget)) {
            monitor->resize(WindowSize);
            viewer_.Take(*monitor, "monitor");
            monitor->close();
        }
}

void Studio::TakeFlash()
{
    SetupDocument& document = Session().document;
    for (ModuleRecord& record : document.Modules)
        if (record.Kind == ModuleKind::KM064)
            record.KeyMap.replace(0, 3, "010");
    viewer_.TakeDialog([&] { Run(Command::ToolsMenuFlashDownload); },
                       [&](QWidget& question) {
                           viewer_.Take(question, "download");
                           viewer_.TakeDialog([&] { Find<QAbstractButton>(question, "Compare").click(); },
                                              [&](QWidget& comparison) {
                                                  comparison.resize(WindowSize);
                                                  viewer_.Take(comparison, "compare");
                                              });
                       });
    TakeDialogOf(Command::ToolsMenuFlashBackups, "backups");
}

void Studio::TakeWizard()
{
    viewer_.TakeDialog([&] { Run(Command::EpromWizard); }, [&](QWidget& wizard) { TakeWizardPages(wizard); });
}

void Studio::TakeWizardPages(QWidget& wizard)
{
    constexpr std::array Pages{"identity-start", "identity-cables", "identity-line", "identity-table"};
    for (const char* const page : Pages) {
        viewer_.Take(wizard, QLatin1String(page));
        if (page != Pages.back())
            Find<QAbstractButton>(wizard, "NextCommand").click();
    }
    constexpr int Identity = 2;
    auto& list = Find<QComboBox>(wizard, "NewDev3");
    list.setCurrentIndex(Identity);
    emit list.activated(Identity);
    viewer_.TakeDialog([&] { Find<QAbstractButton>(wizard, "UpdateCommand").click(); },
                       [&](QWidget& question) { viewer_.Take(question, "identity-write"); });
}

// One till that failed, one that is worked on, and two that are done.
void Studio::TakeSeries()
{
    using Kind = SeriesEvent::Kind;
    using Result = JournalEntry::Result;
    // The second line is there for this picture alone.
    const Lines lines({&port_, &port_}, loop_);
    std::vector<FakeSeriesRunner*> runners;
    SeriesWindow series(program_.files, lines, program_.main, loop_, [&] {
        auto runner = std::make_unique<FakeSeriesRunner>();
        runners.push_back(runner.get());
        return runner;
    });
    series.setAttribute(Qt::WA_DeleteOnClose, false);
    series.Offer(QStringLiteral("/home/shop/till.dat"), 1);
    series.Offer({}, 2);
    series.resize(WindowSize.width(), WindowSize.width() * 3 / 4);
    series.show();
    prompt_.answers = {Answer::Yes};
    Find<QAbstractButton>(series, "Start").click();
    for (const auto& [terminal, result] :
         {std::pair{"TILL 05", Result::Done}, std::pair{"TILL 06", Result::Same},
          std::pair{"TILL 07", Result::Failed}})
        runners.at(0)->Say(FakeSeriesRunner::Verdict(1, terminal, result));
    runners.at(1)->Say({.kind = Kind::Found, .line = 2, .terminal = "TILL 08"});
    runners.at(1)->Say(FakeSeriesRunner::Verdict(2, "TILL 08", Result::Done));
    viewer_.Take(series, "series");
    for (FakeSeriesRunner* const runner : runners)
        runner->onEnd({});
}

void Studio::TakeJournal()
{
    Run(Command::ToolsMenuJournal);
    for (QWidget* const widget : QApplication::topLevelWidgets())
        if (auto* const journal = dynamic_cast<JournalWindow*>(widget)) {
            journal->resize(WindowSize);
            Find<QTableView>(*journal, "Entries").selectRow(0);
            viewer_.Take(*journal, "journal");
            journal->close();
        }
}

}  // namespace

void TakeAll(const std::string& language, const SceneFolders& folders, const Viewer& viewer)
{
    Studio studio(language, folders, viewer);
    studio.TakeStart();
    studio.TakeSetup();
    studio.TakePlacing();
    studio.TakePaper();
    studio.TakeKeys();
    studio.TakeLine();
    studio.TakeFlash();
    studio.TakeWizard();
    studio.TakeSeries();
    studio.TakeJournal();
}

}  // namespace kelvora
