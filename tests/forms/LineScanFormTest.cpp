#include <QLabel>
#include <QProgressBar>

#include "comms/forms/frmAbort.h"
#include "forms/MainWindowFixture.h"
#include "layout/LayoutCommands.h"
#include "setup/SetupWriter.h"

namespace kelvora {
namespace {

using std::chrono::milliseconds;

class LineScanForm : public MainWindowFixture {
protected:
    LineScanForm() : MainWindowFixture(true) { Start(); }

    // Begins it, does `meanwhile` after that time, and waits for its end.
    void Scan(Command command, milliseconds time = {}, const std::function<void()>& meanwhile = nullptr)
    {
        QApplication::setActiveWindow(window.get());
        Trigger(command);
        if (meanwhile)
            loop.After(time, meanwhile);
        loop.Pass(milliseconds(0));
        EXPECT_FALSE(program.operation.IsBusy());
        EXPECT_FALSE(port.IsOpen());
    }

    QString Text(const char* panel)
    {
        return window->Status().findChild<QLabel*>(QLatin1String(panel))->text();
    }
    frmAbort* Abort() { return window->findChild<frmAbort*>(); }
    SetupSession& Session() { return window->ActiveSetup()->Session(); }

    const std::vector<ModuleKind> allFour{ModuleKind::KM096, ModuleKind::KM064, ModuleKind::MCR,
                                          ModuleKind::ICCR};
};

TEST_F(LineScanForm, ScanFillsTheWindowAndIsSavedAsAFile)
{
    bool seen = false;
    Scan(Command::FileMenuScan, milliseconds(5000), [&] {
        seen = true;
        EXPECT_EQ(Text("StatusPanel"), "Scanning COM1 ...");
        EXPECT_TRUE(Text("OperationPanel").startsWith(" Line Scan + Flash Upload - 0:0"));
        const auto* bar = window->Status().findChild<QProgressBar*>();
        EXPECT_TRUE(bar->isVisible() && bar->value() > 30 && bar->value() < 70) << bar->value();
        EXPECT_TRUE(MainChain(Modules()).empty());
        // The devices are there, greyed, before their keys.
        for (const StripButton button : {StripButton::Master, StripButton::KM064, StripButton::Keypad})
            EXPECT_TRUE(Strip().Button(button).isVisible() && !Strip().Button(button).isEnabled());
        // Nothing is said of what is read last: the separators, and whether it reads unasked.
        EXPECT_EQ(Strip().Button(StripButton::MCR).accessibleDescription(), "1,2,3");
        WaitingPanel& waiting = *Strip().Waiting();
        EXPECT_EQ(waiting.findChild<QProgressBar*>()->value(), bar->value());
        EXPECT_TRUE(waiting.findChild<QLabel*>("WaitingTimeLeft")->text().startsWith("Time left: 0:0"));
        EXPECT_FALSE(waiting.geometry().intersects(Strip().StripRect()));
        for (const Command command : {Command::FileMenuScan, Command::FileMenuNew, Command::FileMenuClose,
                                      Command::ToolsMenuRescanLine, Command::LayoutMenuAddKBMASTER})
            EXPECT_FALSE(IsEnabled(command));
        for (QWidget* const closing : {static_cast<QWidget*>(window->ActiveSetup()->parentWidget()),
                                       static_cast<QWidget*>(window.get())}) {
            window->Status().clearMessage();
            closing->close();
            EXPECT_TRUE(closing->isVisible());
            EXPECT_EQ(window->Status().currentMessage().toStdString(), Message::NotClosedHint.fallback);
        }
        EXPECT_FALSE(closed);
    });
    EXPECT_TRUE(seen);
    EXPECT_TRUE(prompt.shown.empty());
    EXPECT_EQ(MainChain(Modules()), allFour);
    EXPECT_TRUE(Strip().Button(StripButton::Master).isEnabled());
    EXPECT_FALSE(Strip().Waiting());
    EXPECT_EQ(Session().settings.Name, "PosConfiguration 1");
    EXPECT_TRUE(window->ActiveSetup()->IsChanged());
    EXPECT_TRUE(IsEnabled(Command::ToolsMenuRescanLine));
    EXPECT_EQ(Text("OperationPanel").trimmed(), ToQString(IdleText(program.texts)).trimmed());
    EXPECT_EQ(line.Memory().mode, '0');

    dialogs.choices.push_back({path, PathFromQString(folder.path()), 1});
    Trigger(Command::FileMenuSave);
    EXPECT_EQ(files.Read(PathFromQString(folder.path()) + "/till.dat"), WriteSetup(Modules()) + "\r\n");
    EXPECT_FALSE(window->ActiveSetup()->IsChanged());
}

TEST_F(LineScanForm, ARescanIsOneStepBackAlsoWhenTheLineIsDead)
{
    Scan(Command::FileMenuScan);
    dialogs.choices.push_back({path, PathFromQString(folder.path()), 1});
    Trigger(Command::FileMenuSave);
    const WindowFile saved = Session().HeldAs();
    const SetupDocument before = Session().document;

    bench::FaultPlan dead;
    dead.silentAfter.toHost = 0;
    line.SetFaults(dead);
    Scan(Command::ToolsMenuRescanLine);
    ASSERT_EQ(prompt.shown.size(), 1U);
    EXPECT_NE(prompt.shown[0].body.find("224"), std::string::npos) << prompt.shown[0].body;
    EXPECT_TRUE(prompt.shown[0].body.ends_with(
        "\r\nPosConfiguration 1, COM1 (bench): 9600,n,8,1\r\n$9900: no answer\r\n" +
        std::string(Message::ScanNothing.fallback) + "\r\n" + std::string(Message::ScanUndoHint.fallback)))
        << prompt.shown[0].body;
    EXPECT_TRUE(Modules().empty());
    EXPECT_EQ(Session().settings.FileName, "");
    EXPECT_EQ(Session().settings.Name, "PosConfiguration 1");

    Trigger(Command::EditMenuUndo);
    EXPECT_EQ(Session().document, before);
    EXPECT_EQ(Session().settings.FileName, saved.file.fileName);
    EXPECT_EQ(Session().settings.Name, saved.name);
    Trigger(Command::EditMenuRedo);
    EXPECT_TRUE(Modules().empty());
    EXPECT_EQ(Session().settings.FileName, "");
}

TEST_F(LineScanForm, OnlyTerminateStopsIt)
{
    auto* const stop = window->Status().findChild<QAbstractButton*>("StopButton");
    ASSERT_TRUE(stop);
    const struct {
        const char* why;
        std::function<void()> answer;
        bool stops;
    } rows[]{
        {"continue", [&] { Press(*Abort(), "ContinueCommand"); }, false},
        {"another window comes to the front",
         [&] {
             QEvent away(QEvent::WindowDeactivate);
             QCoreApplication::sendEvent(Abort(), &away);
         },
         false},
        {"the end of the operation closes it", [] {}, false},
        {"terminate", [&] { Press(*Abort(), "AbortCommand"); }, true},
    };
    for (const auto& row : rows) {
        Scan(Command::FileMenuScan, milliseconds(3000), [&] {
            QApplication::setActiveWindow(window.get());
            EXPECT_TRUE(stop->isVisible());
            // The key and the button ask for the same.
            if (row.stops)
                Strip().Waiting()->Stop().click();
            else
                QTest::keyClick(window.get(), Qt::Key_Escape);
            ASSERT_TRUE(Abort() && Abort()->isVisible()) << row.why;
            EXPECT_FALSE(program.operation.IsStopAsked());
            EXPECT_EQ(Abort()->findChild<QLabel*>("InfoLabel")->text().toStdString(),
                      "Line Scan + Flash Upload\n" + std::string(Message::AbortInfo.fallback));
            row.answer();
            EXPECT_EQ(stop->isVisible(), !row.stops) << row.why;
        });
        EXPECT_FALSE(stop->isVisible());
        // What is chosen has the focus: Del goes there.
        QApplication::setActiveWindow(window.get());
        ASSERT_TRUE(Strip().FocusedButton()) << row.why;
        EXPECT_TRUE(Strip().Button(*Strip().FocusedButton()).hasFocus()) << row.why;
        EXPECT_EQ(program.operation.IsStopAsked(), row.stops) << row.why;
        EXPECT_TRUE(!Abort() || !Abort()->isVisible()) << row.why;
        // What had been read stays: the map has come, the image has not.
        EXPECT_EQ(MainChain(Modules()), allFour) << row.why;
        EXPECT_EQ(Session().deviceImage.has_value(), !row.stops) << row.why;
        // Which window it was, that it was stopped, and that the keys are the defaults.
        ASSERT_EQ(prompt.shown.size(), row.stops ? 1U : 0U) << row.why;
        if (row.stops) {
            EXPECT_EQ(prompt.shown[0].body, std::string(Message::ScanStopped.fallback) + "\r\n" +
                                                Session().settings.Name + ", COM1\r\n" +
                                                std::string(Message::ScanNoImage.fallback));
        }
        prompt.shown.clear();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    // The next operation begins with no stop asked for; idle, the key only tells what it is for.
    Scan(Command::ToolsMenuRescanLine);
    EXPECT_TRUE(Session().deviceImage);
    QTest::keyClick(window->ActiveSetup(), Qt::Key_Escape);
    ASSERT_EQ(prompt.shown.size(), 1U);
    EXPECT_NE(prompt.shown[0].body.find("270"), std::string::npos);
    EXPECT_FALSE(program.operation.IsStopAsked());
}

TEST_F(LineScanForm, APortThatDoesNotOpenSaysWhy)
{
    const std::pair<PortFailure, MessageId> rows[]{
        {PortFailure::Missing, Message::PortMissing},
        {PortFailure::NotAllowed, Message::PortNotAllowed},
        {PortFailure::InUse, Message::PortInUse},
        {PortFailure::BadSettings, Message::PortBadSettings},
        {PortFailure::SevenBits, Message::LineNeedsEightBits},
        {PortFailure::HostNotFound, Message::PortHostNotFound},
        {PortFailure::Refused, Message::PortRefused},
        {PortFailure::NoAnswer, Message::PortNoAnswer},
        {PortFailure::NoSettings, Message::PortNoSettings},
        {PortFailure::Other, Message::PortOtherFailure},
    };
    Trigger(Command::FileMenuNew);
    for (const auto& [failure, message] : rows) {
        port.refusal = failure;
        prompt.shown.clear();
        Scan(Command::ToolsMenuRescanLine);
        ASSERT_EQ(prompt.shown.size(), 1U);
        EXPECT_TRUE(prompt.shown[0].body.starts_with(message.fallback)) << prompt.shown[0].body;
    }
    EXPECT_EQ(window->AllSetups().size(), 1U);
}

}  // namespace
}  // namespace kelvora
