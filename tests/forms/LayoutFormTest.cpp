#include "forms/MainWindowFixture.h"
#include "layout/LayoutCommands.h"
#include "layout/forms/OptionsDialogs.h"

namespace kelvora {

using Chain = std::vector<ModuleKind>;

class LayoutForm : public MainWindowFixture {
protected:
    LayoutForm()
    {
        Start();
        Trigger(Command::FileMenuNew);
    }

    Chain Shown() { return MainChain(Modules()); }

    void AddMasterAndSlave()
    {
        Trigger(Command::LayoutMenuAddKBMASTER);
        Trigger(Command::LayoutMenuAddKB64);
    }

    void Key(Qt::Key key) { QTest::keyClick(&Strip(), key); }

    /// The middle of a button, a little towards one of its sides, in the strip.
    QPoint Beside(StripButton at, int dx) { return Strip().Button(at).geometry().center() + QPoint(dx, 0); }
};

constexpr ModuleKind Master = ModuleKind::KM096;
constexpr ModuleKind Slave = ModuleKind::KM064;
constexpr ModuleKind Mcr = ModuleKind::MCR;

TEST_F(LayoutForm, FirstTwoModulesStandAtOnceTheThirdIsPlacedByKeyboard)
{
    EXPECT_FALSE(IsEnabled(Command::LayoutMenuAddKB64));
    Press(Strip(), "AddMaster");
    Trigger(Command::LayoutMenuAddKB64);
    EXPECT_EQ(Shown(), (Chain{Master, Slave}));
    EXPECT_FALSE(IsEnabled(Command::LayoutMenuMove));

    Trigger(Command::LayoutMenuAddMCR);
    EXPECT_TRUE(window->ActiveSetup()->IsPlacing());
    EXPECT_FALSE(IsEnabled(Command::FileMenuSave)) << "it is dropped or cancelled first";
    Key(Qt::Key_Left);
    EXPECT_EQ(Find<QWidget>(Strip(), "Announcement").accessibleName(), "MCR, device 2 of 3");
    Trigger(Command::HelpMenuGuide);
    Key(Qt::Key_Left);
    Key(Qt::Key_Return);
    EXPECT_EQ(Shown(), (Chain{Master, Mcr, Slave}));
    EXPECT_EQ(Strip().FocusedButton(), StripButton::MCR);
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(&Strip().Button(StripButton::MCR))->state().selected);
    EXPECT_TRUE(IsEnabled(Command::LayoutMenuMove));

    Trigger(Command::LayoutMenuMove);
    Key(Qt::Key_Right);
    Key(Qt::Key_Enter);
    EXPECT_EQ(Shown(), (Chain{Master, Slave, Mcr}));
    for (int steps = 0; steps < 4; ++steps)
        Trigger(Command::EditMenuUndo);
    EXPECT_EQ(Shown(), Chain{});
    EXPECT_FALSE(window->ActiveSetup()->IsChanged());
    Trigger(Command::EditMenuRedo);
    EXPECT_EQ(Shown(), Chain{Master});
}

TEST_F(LayoutForm, MouseOpensTheGapAndAClickDrops)
{
    AddMasterAndSlave();
    Trigger(Command::LayoutMenuAddMCR);
    // The release of the click that began it is not a drop.
    QTest::mouseRelease(&Strip(), Qt::LeftButton, {}, Beside(StripButton::KM064, 0));
    QTest::mouseMove(&Strip(), Beside(StripButton::KM064, -20));
    const int gapAt = Strip().Button(StripButton::Master).geometry().right();
    EXPECT_GT(Strip().Button(StripButton::KM064).x(), gapAt + Strip().Button(StripButton::MCR).width());
    QTest::mouseClick(&Strip(), Qt::LeftButton, {}, Beside(StripButton::Master, 60));
    EXPECT_EQ(Shown(), (Chain{Master, Mcr, Slave}));
    EXPECT_FALSE(window->ActiveSetup()->IsPlacing());
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
}

TEST_F(LayoutForm, EscAndLosingTheFocusPutEverythingBack)
{
    AddMasterAndSlave();
    const QRect before = Strip().Button(StripButton::KM064).geometry();
    const auto cancelledBy = [&](const std::function<void()>& cancel) {
        Trigger(Command::LayoutMenuAddMCR);
        Key(Qt::Key_Left);
        EXPECT_NE(Strip().Button(StripButton::KM064).geometry(), before);
        cancel();
        EXPECT_FALSE(window->ActiveSetup()->IsPlacing());
        EXPECT_EQ(Strip().Button(StripButton::KM064).geometry(), before);
        EXPECT_FALSE(Strip().Button(StripButton::MCR).isVisible());
        EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
        EXPECT_EQ(Shown(), (Chain{Master, Slave}));
    };
    cancelledBy([&] { Key(Qt::Key_Escape); });
    cancelledBy([&] { Strip().clearFocus(); });
    EXPECT_TRUE(prompt.shown.empty()) << "Esc ended the placing and did not interrupt";
    Key(Qt::Key_Escape);
    EXPECT_EQ(prompt.shown.size(), 1U);
}

TEST_F(LayoutForm, ACommandThatDoesNothingSaysWhy)
{
    AddMasterAndSlave();
    window->Actions()[Command::ViewMenuStatusBar].setChecked(false);
    Trigger(Command::LayoutMenuAddICCR);
    EXPECT_TRUE(window->Status().isVisible()) << "it tells how to place";
    Key(Qt::Key_Return);
    EXPECT_FALSE(window->Status().isVisible());
    const auto says = [&](StripButton button, Command command, const MessageId& hint) {
        Strip().FocusButton(button);
        Trigger(command);
        EXPECT_EQ(window->Status().currentMessage().toStdString(), hint.fallback);
        EXPECT_EQ(Shown().size(), 3U);
        EXPECT_FALSE(window->ActiveSetup()->IsPlacing());
    };
    says(StripButton::Master, Command::LayoutMenuMove, Message::MasterStaysHint);
    EXPECT_TRUE(window->Status().isVisible());
    EXPECT_FALSE(window->Status().findChild<QWidget*>("PortPanel")->isVisible()) << "below it";
    window->Status().clearMessage();
    EXPECT_FALSE(window->Status().isVisible());
    window->Actions()[Command::ViewMenuStatusBar].setChecked(true);
    says(StripButton::Keypad, Command::LayoutMenuDel, Message::KeypadStaysHint);
    Strip().FocusButton(StripButton::ICCR);
    Trigger(Command::LayoutMenuDel);
    EXPECT_TRUE(window->Status().currentMessage().isEmpty()) << "the hint goes with the next thing done";
    EXPECT_EQ(Shown(), (Chain{Master, Slave}));
}

TEST_F(LayoutForm, DeleteAsksBeforeTheWholeChainGoes)
{
    AddMasterAndSlave();
    Strip().FocusButton(StripButton::Master);
    prompt.answers = {Answer::No, Answer::Yes};
    Trigger(Command::LayoutMenuDel);
    EXPECT_EQ(Shown(), (Chain{Master, Slave}));
    Trigger(Command::LayoutMenuDel);
    EXPECT_EQ(Shown(), Chain{});
    EXPECT_EQ(prompt.shown.size(), 2U);
    EXPECT_FALSE(IsEnabled(Command::LayoutMenuDel));
}

TEST_F(LayoutForm, OptionsRefuseWhatAFileCannotCarry)
{
    Trigger(Command::LayoutMenuAddKBMASTER);
    Trigger(Command::LayoutMenuAddMCR);
    const auto edit = [this](const std::function<void(McrOptionsDialog&)>& act) {
        InDialog<McrOptionsDialog>(
            [this] { QTest::mouseDClick(&Strip().Button(StripButton::MCR), Qt::LeftButton); }, act);
    };
    edit([](McrOptionsDialog& form) {
        const auto* ok = Find<QDialogButtonBox>(form).button(QDialogButtonBox::Ok);
        auto& separator = Find<QLineEdit>(form, "SeparatorText2");
        for (const QString& refused : {QString("_"), QString("a"), QString(QChar(0x0416))}) {
            separator.setText(refused);
            EXPECT_FALSE(ok->isEnabled()) << refused.toStdString();
            EXPECT_TRUE(Find<QLabel>(form, "RefusedReason").isVisible());
        }
        separator.setText(";");
        EXPECT_TRUE(ok->isEnabled());
        Press(form, "TracksOption1");
        form.accept();
    });
    EXPECT_EQ(Modules().back().Options, "1,2  ^;^ON ");
    // OK without a change is no step.
    const int steps = window->ActiveSetup()->UndoStack().count();
    edit([](McrOptionsDialog& form) { form.accept(); });
    EXPECT_EQ(window->ActiveSetup()->UndoStack().count(), steps);

    Strip().FocusButton(StripButton::Master);
    InDialog<MasterOptionsDialog>(Command::LayoutMenuOptions, [](MasterOptionsDialog& form) {
        Press(form, "FiscalCheck");
        Press(form, "BacklightCheck");
        form.accept();
    });
    EXPECT_EQ(Modules()[0].Options, "NO ");
    EXPECT_EQ(static_cast<unsigned char>(Session().document.DeviceMap[1]), 31);
}

TEST_F(LayoutForm, LanguageChangeRetextsEveryWindowAndIsKept)
{
    const LanguageFolders folders{Folder(), Folder()};
    const std::string header = "000, Dravon Messages \r\n";
    for (const char* const settings : {"/ZelENG.ini", "/ZelITA.ini"})
        files.Write(Folder() + settings, "");
    files.Write(MessageFile(folders, "ENG"), header);
    files.Write(MessageFile(folders, "ITA"), header + "301, &Nuovo \r\n590, Pronto \r\n622, Tastiera \r\n");
    Trigger(Command::LayoutMenuAddKBMASTER);
    Trigger(Command::FileMenuNew);
    auto& menu = Find<QMenu>(*window, "LanguageMenu");
    emit menu.aboutToShow();
    ASSERT_EQ(menu.actions().size(), 2);
    menu.actions().at(1)->trigger();
    EXPECT_EQ(window->Actions()[Command::FileMenuNew].text(), "&Nuovo");
    EXPECT_EQ(window->Status().Operation().trimmed(), "Pronto");
    EXPECT_EQ(window->AllSetups().at(0)->Strip().Button(StripButton::Master).accessibleName(),
              "Tastiera, device 1 of 1");
    EXPECT_EQ(files.Read(PersonalSelectionFile(folders)), "[CHOOSE]\r\nEXT = ITA\r\n");
    // A language without texts changes nothing.
    files.Write(MessageFile(folders, "ENG"), "damaged");
    emit menu.aboutToShow();
    menu.actions().at(0)->trigger();
    EXPECT_EQ(program.language.Code(), "ITA");
    EXPECT_EQ(prompt.shown.size(), 1U);
}

TEST_F(LayoutForm, PortsFollowTheMachineAndTheWindow)
{
    auto& lines = Find<QMenu>(*window, "CommunicationsMenuLines");
    emit lines.aboutToShow();
    EXPECT_FALSE(lines.actions().at(0)->isEnabled()) << "no port on this machine";
    window->ActiveSetup()->SelectPort(3);
    EXPECT_TRUE(lines.actions().at(2)->isChecked());
    EXPECT_EQ(Says(*window, "PortPanel"), " COM3: 9600,n,8,1");
    Trigger(Command::FileMenuNew);
    EXPECT_TRUE(lines.actions().at(2)->isChecked()) << "a new window takes the last choice";
    window->ActiveSetup()->SelectPort(2);
    Trigger(Command::WindowMenuNext);
    EXPECT_TRUE(lines.actions().at(2)->isChecked()) << "each window has its own";
}

}  // namespace kelvora
