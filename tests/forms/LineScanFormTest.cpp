#include "comms/forms/frmAbort.h"
#include "forms/MainWindowFixture.h"
#include "layout/LayoutCommands.h"
#include "setup/SetupWriter.h"
#include "windows/forms/SimulatedDevices.h"

namespace kelvora {

using std::chrono::milliseconds;

class LineScanForm : public MainWindowFixture {
protected:
    LineScanForm() : MainWindowFixture(true) { Start(); }

    /// Does `meanwhile` so long after the beginning.
    void Scan(milliseconds time, const std::function<void()>& meanwhile)
    {
        Trigger(Command::FileMenuScan);
        loop.After(time, meanwhile);
        loop.Pass(milliseconds(0));
    }

    std::string Text(const char* panel) { return Says(window->Status(), panel); }
    frmAbort* Abort() { return window->findChild<frmAbort*>(); }

    const std::vector<ModuleKind> allFour{ModuleKind::KM096, ModuleKind::KM064, ModuleKind::MCR,
                                          ModuleKind::ICCR};
};

TEST_F(LineScanForm, ScanFillsTheWindowAndIsSavedAsAFile)
{
    bool seen = false;
    Scan(milliseconds(5000), [&] {
        seen = true;
        EXPECT_EQ(Text("StatusPanel"), "Scanning COM1 ...");
        EXPECT_THAT(Text("OperationPanel"), StartsWith(" Line Scan + Flash Upload - 0:0"));
        const auto& bar = Find<QProgressBar>(window->Status());
        EXPECT_TRUE(bar.isVisible() && bar.value() > 30 && bar.value() < 70) << bar.value();
        EXPECT_TRUE(MainChain(Modules()).empty());
        // The devices are there, greyed, before their keys.
        for (const StripButton button : {StripButton::Master, StripButton::KM064, StripButton::Keypad})
            EXPECT_TRUE(Strip().Button(button).isVisible() && !Strip().Button(button).isEnabled());
        // Nothing is said of what is read last: the separators, and whether it reads unasked.
        EXPECT_EQ(Strip().Button(StripButton::MCR).accessibleDescription(), "1,2,3");
        WaitingPanel& waiting = *Strip().Waiting();
        EXPECT_EQ(Find<QProgressBar>(waiting).value(), bar.value());
        EXPECT_THAT(Says(waiting, "WaitingTimeLeft"), StartsWith("Time left: 0:0"));
        EXPECT_FALSE(waiting.geometry().intersects(Strip().StripRect()));
        for (const Command command :
             {Command::FileMenuScan, Command::FileMenuNew, Command::FileMenuClose,
              Command::ToolsMenuRescanLine, Command::ToolsMenuFlashDownload, Command::LayoutMenuAddKBMASTER,
              Command::EpromWizard, Command::FileMenuPrint, Command::FileMenuExport})
            EXPECT_FALSE(IsEnabled(command));
        for (QWidget* const closing : {static_cast<QWidget*>(window->ActiveSetup()->parentWidget()),
                                       static_cast<QWidget*>(window.get())}) {
            window->Status().clearMessage();
            closing->close();
            EXPECT_TRUE(closing->isVisible());
            EXPECT_EQ(window->Status().currentMessage().toStdString(), Message::NotClosedHint.fallback);
        }
    });
    EXPECT_TRUE(seen);
    EXPECT_TRUE(prompt.shown.empty());
    EXPECT_EQ(MainChain(Modules()), allFour);
    EXPECT_TRUE(Strip().Button(StripButton::Master).isEnabled() && !Strip().Waiting());
    EXPECT_EQ(Session().settings.Name, "PosConfiguration 1");
    EXPECT_TRUE(window->ActiveSetup()->IsChanged());
    EXPECT_TRUE(IsEnabled(Command::ToolsMenuRescanLine));
    EXPECT_THAT(Text("OperationPanel"), HasSubstr("590"));

    Choose("Till.dat");
    Trigger(Command::FileMenuSave);
    EXPECT_EQ(files.Read(At("till.dat")), WriteSetup(Modules()) + "\r\n");
    EXPECT_FALSE(window->ActiveSetup()->IsChanged());

    // The button of an empty setup is switched off meanwhile.
    Trigger(Command::FileMenuNew);
    prompt.answers = {Answer::No};
    Run(Command::ToolsMenuFlashVerify);
    EXPECT_TRUE(Strip().findChild<QAbstractButton*>("AddMaster")->hasFocus());
}

TEST_F(LineScanForm, ARescanIsOneStepBackAlsoWhenTheLineIsDead)
{
    Run(Command::FileMenuScan);
    Choose("Till.dat");
    Trigger(Command::FileMenuSave);
    const WindowFile saved = Session().HeldAs();
    const SetupDocument before = Session().document;

    line.SetFaults({.silentAfter = {.toHost = 0}});
    Run(Command::ToolsMenuRescanLine);
    EXPECT_THAT(prompt.TakeBodies(),
                ElementsAre(AllOf(
                    HasSubstr("224"),
                    HasSubstr("\r\nPosConfiguration 1, COM1 (bench): 9600,n,8,1\r\n$9900: no answer"))));
    EXPECT_TRUE(Modules().empty());
    EXPECT_EQ(Session().settings.FileName, "");

    Trigger(Command::EditMenuUndo);
    EXPECT_EQ(Session().document, before);
    EXPECT_EQ(Session().settings.FileName, saved.file.fileName);
    EXPECT_EQ(Session().settings.Name, saved.name);
    Trigger(Command::EditMenuRedo);
    EXPECT_TRUE(Modules().empty());

    // Another window has the file by now: the setup comes back without it, and is in no file.
    window->OpenFiles({PathToQString(saved.file.path)});
    Trigger(Command::WindowMenuNext);
    for (const Command command : {Command::EditMenuUndo, Command::EditMenuRedo, Command::EditMenuUndo})
        Trigger(command);
    EXPECT_EQ(Session().document, before);
    EXPECT_EQ(Session().File().path + Session().settings.FileName, "");
    EXPECT_EQ(window->ActiveSetup()->windowTitle(), "till.dat[*]");
    EXPECT_TRUE(window->ActiveSetup()->isWindowModified());
}

TEST_F(LineScanForm, OnlyTerminateStopsIt)
{
    auto& stop = Find<QAbstractButton>(window->Status(), "StopButton");
    const auto check = [&](const char* why, bool stops, const std::function<void()>& answer) {
        Scan(milliseconds(3000), [&] {
            QApplication::setActiveWindow(window.get());
            EXPECT_TRUE(stop.isVisible());
            // The key and the button ask for the same.
            if (stops)
                Strip().Waiting()->Stop().click();
            else
                QTest::keyClick(window.get(), Qt::Key_Escape);
            ASSERT_TRUE(Abort() && Abort()->isVisible()) << why;
            EXPECT_FALSE(program.operation.IsStopAsked());
            answer();
            EXPECT_EQ(stop.isVisible(), !stops) << why;
        });
        EXPECT_FALSE(stop.isVisible());
        // What is chosen has the focus: Del goes there.
        QApplication::setActiveWindow(window.get());
        ASSERT_TRUE(Strip().FocusedButton()) << why;
        EXPECT_TRUE(Strip().Button(*Strip().FocusedButton()).hasFocus()) << why;
        EXPECT_EQ(program.operation.IsStopAsked(), stops) << why;
        EXPECT_TRUE(!Abort() || !Abort()->isVisible()) << why;
        // What had been read stays: the map has come, the image has not.
        EXPECT_EQ(MainChain(Modules()), allFour) << why;
        EXPECT_EQ(Session().DeviceImage() != nullptr, !stops) << why;
        // Which window it was, that it was stopped, and that the keys are the defaults.
        const std::vector<std::string> told{std::string(Message::ScanStopped.fallback) + "\r\n" +
                                            Session().settings.Name + ", COM1\r\n" +
                                            std::string(Message::ScanNoImage.fallback)};
        EXPECT_EQ(prompt.TakeBodies(), stops ? told : std::vector<std::string>()) << why;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    check("continue", false, [&] { Press(*Abort(), "ContinueCommand"); });
    check("another window comes to the front", false, [&] {
        QEvent away(QEvent::WindowDeactivate);
        QCoreApplication::sendEvent(Abort(), &away);
    });
    check("the end of the operation closes it", false, [] {});
    check("terminate", true, [&] { Press(*Abort(), "AbortCommand"); });
    // The next operation begins with no stop asked for; idle, the key only tells what it is for.
    Run(Command::ToolsMenuRescanLine);
    EXPECT_TRUE(Session().DeviceImage());
    QTest::keyClick(window->ActiveSetup(), Qt::Key_Escape);
    EXPECT_THAT(prompt.TakeBodies(), ElementsAre(HasSubstr("270")));
    EXPECT_FALSE(program.operation.IsStopAsked());
}

TEST_F(LineScanForm, SimulatedDevicesStandBehindThePortsThatWereNotNamedUntilTheyGo)
{
    const PortNames named(files, "/none", {{1, "/dev/mine"}});
    SimulatedDevices(program, named).Begin({});
    EXPECT_FALSE(program.lines.HasSimulation());
    const PortNames names(files, "/none", {});
    // Held open, its name becomes no other line's.
    QFile device;
    for (const bool isEnded : {true, false}) {
        SimulatedDevices devices(program, names);
        devices.Begin({});
        device.close();
        device.setFileName(PathToQString(port.Device()));
        EXPECT_TRUE(program.lines.IsSimulated(1) && device.open(QIODevice::ReadWrite)) << port.Device();
        if (isEnded)
            devices.End();
        EXPECT_EQ(port.Device() == names.Devices()[0], isEnded);
        EXPECT_EQ(device.exists(), !isEnded);
    }
    EXPECT_FALSE(device.exists()) << "its program ends with it";
}

}  // namespace kelvora
