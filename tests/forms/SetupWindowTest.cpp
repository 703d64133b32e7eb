#include <future>

#include "fakes/FakeFiles.h"
#include "forms/MainWindowFixture.h"
#include "keymap/forms/frmKeyb.h"
#include "platform/AsciiCase.h"

namespace kelvora {
namespace {

using namespace std::chrono_literals;

// What a technician's file holds, byte for byte, with that row where key 52 stands.
std::string TillWith(const std::string& row)
{
    return "[Kelvora]\r\nVersion = 2.0\r\n[KM096]\r\n"
           "KeyMap = SS________SS _\r\n         SS________SS _\r\n         SS________SS _\r\n"
           "         SSSSSSSSSSSS _\r\n         " +
           row +
           " _\r\n         SSSSSSSSSSSS _\r\n         SSSSSSSSSSHH _\r\n         SSSSSSSSSSHH\r\n"
           "Fiscal = YES\r\nBacklight = NO \r\n"
           "[MCR]\r\nTracks = 1,2  \r\nTrack1Sep = ;\r\nAutoread = OFF\r\n\r\n";
}

const std::string Before = TillWith("SSSSSSSSSSSS");
const std::string After = TillWith("SSSHHSSSSSSS");  // with a double horizontal key 52

class SetupWindow : public MainWindowFixture {
protected:
    SetupWindow()
    {
        files.Write(path, Before);
        Start();
    }

    void MakeKey52DoubleHorizontal()
    {
        InDialog<frmKeyb>(StripButton::Master, [](frmKeyb& form) {
            Press(form, "Keys51");
            Press(form, "KeyTypeOption2");
            Press(form, "Back");
        });
    }
};

TEST_F(SetupWindow, OpenChangeAKeyUndoSaveClose)
{
    Choose("Till.dat");
    Trigger(Command::FileMenuOpen);
    frmConfig* setup = window->ActiveSetup();
    ASSERT_NE(setup, nullptr);
    EXPECT_EQ(setup->windowTitle(), "till[*]");
    EXPECT_EQ(setup->Session().settings.FileName, LowerCase(path));
    // Quit without a change changes nothing, a part of the keyboard opens nothing.
    InDialog<frmKeyb>(StripButton::Master, [](frmKeyb& form) { Press(form, "Back"); });
    Click(StripButton::Backlight);
    EXPECT_FALSE(setup->IsChanged());

    const SetupDocument opened = setup->Session().document;
    MakeKey52DoubleHorizontal();
    EXPECT_TRUE(setup->isWindowModified());
    Trigger(Command::EditMenuUndo);
    EXPECT_EQ(setup->Session().document, opened);
    EXPECT_FALSE(setup->isWindowModified());
    Trigger(Command::EditMenuRedo);
    Trigger(Command::FileMenuSave);
    EXPECT_FALSE(setup->isWindowModified());
    EXPECT_EQ(files.Read(path), After);
    EXPECT_EQ(files.Read(At("Till.bak")), Before);
    // Opening what is open brings it forward.
    window->OpenFiles({PathToQString(path)});
    EXPECT_EQ(window->AllSetups().size(), 1U);
    Trigger(Command::FileMenuClose);
    EXPECT_EQ(window->ActiveSetup(), nullptr);
    EXPECT_TRUE(prompt.shown.empty());
}

TEST_F(SetupWindow, ClosingAsksAndWhatIsSavedOnTheWayToACancelledExitIsNoLongerChanged)
{
    files.Write(At("Other.dat"), Before);
    for (const char* const name : {"Till.dat", "Other.dat"}) {
        window->OpenFiles({PathToQString(At(name))});
        MakeKey52DoubleHorizontal();
    }
    prompt.answers = {Answer::Yes, Answer::Cancel};
    window->close();
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(window->AllSetups().at(0)->isWindowModified());
    EXPECT_TRUE(window->AllSetups().at(1)->isWindowModified());
    EXPECT_EQ(files.Read(path), After);
    prompt.answers = {Answer::Cancel, Answer::Yes};
    Trigger(Command::FileMenuClose);
    EXPECT_EQ(window->AllSetups().size(), 2U);
    Trigger(Command::FileMenuClose);
    EXPECT_EQ(window->AllSetups().size(), 1U);
    EXPECT_EQ(files.Read(At("Other.dat")), After);
}

TEST_F(SetupWindow, FilesWaitWhileADialogIsOpen)
{
    window->OpenFiles({PathToQString(path)});
    files.Write(At("Other.dat"), Before);
    InDialog<frmKeyb>(StripButton::Master, [this](frmKeyb& form) {
        window->OpenFiles({folder.path() + "/Other.dat"});
        // A screen reader presses what lies under it too.
        Trigger(Command::FileMenuNew);
        QAccessible::queryAccessibleInterface(&Strip().Button(StripButton::MCR))
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
        EXPECT_FALSE(Strip().Button(StripButton::MCR).isDown());
        EXPECT_EQ(window->AllSetups().size(), 1U);
        Press(form, "Back");
    });
    QApplication::processEvents();
    EXPECT_EQ(window->AllSetups().size(), 2U);
}

TEST_F(SetupWindow, AFileThatDoesNotComeHoldsUpNothingAndOpensOnceItHasCome)
{
    FakeFiles drive;
    drive.content = {{"/net/a.dat", Before}};
    std::promise<void> answer;
    drive.comesLater["/net/a.dat"] = answer.get_future().share();
    Program other({drive, prompt, dialogs, loop}, {Folder(), Folder()});
    MDIForm1 form(other, {});
    form.show();
    form.OpenFiles({"/net/a.dat"});
    EXPECT_EQ(form.ActiveSetup(), nullptr);
    EXPECT_EQ(form.Status().currentMessage().toStdString(), "The file is being read... /net/a.dat");
    answer.set_value();
    EXPECT_TRUE(QTest::qWaitFor([&] { return form.ActiveSetup() != nullptr; }, LongestWaitMs));
    EXPECT_TRUE(form.Status().currentMessage().isEmpty());
}

TEST_F(SetupWindow, FailedWriteKeepsTheWindowUnlessTheUserLetsItGo)
{
    Trigger(Command::FileMenuNew);
    EXPECT_EQ(window->ActiveSetup()->windowTitle(), "PosConfiguration1[*]");
    Choose("missing/x");
    Trigger(Command::FileMenuSave);
    EXPECT_THAT(prompt.TakeBodies(),
                ElementsAre("File " + At("missing/x.dat") +
                            "\r\nNo such file or directory\r\n\r\nThe file could not be saved."));
    EXPECT_TRUE(Session().settings.FileName.empty());
    Choose("New Till");
    Trigger(Command::FileMenuSave);
    EXPECT_EQ(window->ActiveSetup()->windowTitle(), "new till.dat[*]");
    EXPECT_EQ(files.Read(At("new till.dat")), "[Kelvora]\r\nVersion = 2.0\r\n\r\n");
    // Another file is replaced only after a question.
    Choose("Till.dat");
    prompt.answers = {Answer::No};
    Trigger(Command::FileMenuSaveAs);
    EXPECT_EQ(files.Read(path), Before);
}

TEST_F(SetupWindow, RejectedFileOpensEmptyOnYesAndIsNeverOverwrittenUnasked)
{
    files.Write(path, "[KM064]\r\n[KM096]\r\n");
    prompt.answers = {Answer::No, Answer::Yes};
    window->OpenFiles({PathToQString(path)});
    EXPECT_EQ(window->ActiveSetup(), nullptr);
    EXPECT_NE(prompt.shown.at(0).body.find("Line 2: Expected here: another module"), std::string::npos);
    window->OpenFiles({PathToQString(path)});
    ASSERT_NE(window->ActiveSetup(), nullptr);
    EXPECT_TRUE(Session().document.Modules.empty());
    Trigger(Command::FileMenuSave);
    EXPECT_EQ(dialogs.asked.size(), 1U);
    EXPECT_EQ(files.Read(path), "[KM064]\r\n[KM096]\r\n");
}

TEST_F(SetupWindow, CommandsFollowTheWindowInFront)
{
    EXPECT_FALSE(IsEnabled(Command::FileMenuSave) || IsEnabled(Command::LayoutMenuAddKBMASTER));
    Trigger(Command::FileMenuNew);
    EXPECT_TRUE(IsEnabled(Command::FileMenuSave) && IsEnabled(Command::LayoutMenuAddKBMASTER));
    window->OpenFiles({PathToQString(path)});
    EXPECT_TRUE(IsEnabled(Command::LayoutMenuAddKB64));
    EXPECT_FALSE(IsEnabled(Command::LayoutMenuAddKBMASTER));
    Trigger(Command::WindowMenuCloseAll);
    EXPECT_FALSE(IsEnabled(Command::FileMenuSave) || IsEnabled(Command::LayoutMenuAddKB64));
}

TEST_F(SetupWindow, ClosingTakesTwoSeconds)
{
    window->OpenFiles({PathToQString(path)});
    window->close();
    EXPECT_FALSE(window->isVisible());
    loop.Pass(1999ms);
    EXPECT_FALSE(closed);
    // No command is taken any more.
    window->OpenFiles({PathToQString(path)});
    loop.Pass(1ms);
    EXPECT_TRUE(closed);
    EXPECT_TRUE(window->AllSetups().empty());
}

TEST_F(SetupWindow, DroppedFilesOpen)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(PathToQString(path))});
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    // The application passes a drop on only from its own drag.
    static_cast<QObject&>(*window).event(&drop);
    // The source is not kept waiting: the file opens afterwards.
    QApplication::processEvents();
    ASSERT_NE(window->ActiveSetup(), nullptr);
    EXPECT_EQ(window->ActiveSetup()->windowTitle(), "till[*]");
}

}  // namespace
}  // namespace kelvora
