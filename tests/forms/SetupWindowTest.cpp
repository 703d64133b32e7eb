#include <QDropEvent>
#include <QMimeData>

#include "forms/MainWindowFixture.h"
#include "keymap/forms/frmKeyb.h"
#include "platform/AsciiCase.h"

namespace kelvora {
namespace {

using namespace std::chrono_literals;

// What a technician's file holds, byte for byte, before and after key 52 became a double horizontal key.
const std::string Head = "[Kelvora]\r\nVersion = 2.0\r\n[KM096]\r\n";
const std::string Rows =
    "KeyMap = SS________SS _\r\n"
    "         SS________SS _\r\n"
    "         SS________SS _\r\n"
    "         SSSSSSSSSSSS _\r\n";
const std::string Before = Head + Rows +
                           "         SSSSSSSSSSSS _\r\n"
                           "         SSSSSSSSSSSS _\r\n"
                           "         SSSSSSSSSSHH _\r\n"
                           "         SSSSSSSSSSHH\r\n"
                           "Fiscal = YES\r\nBacklight = NO \r\n[MCR]\r\nTracks = 1,2  \r\nTrack1Sep = ;\r\n"
                           "Autoread = OFF\r\n\r\n";
const std::string After = Head + Rows +
                          "         SSSHHSSSSSSS _\r\n"
                          "         SSSSSSSSSSSS _\r\n"
                          "         SSSSSSSSSSHH _\r\n"
                          "         SSSSSSSSSSHH\r\n"
                          "Fiscal = YES\r\nBacklight = NO \r\n[MCR]\r\nTracks = 1,2  \r\nTrack1Sep = ;\r\n"
                          "Autoread = OFF\r\n\r\n";

class SetupWindow : public MainWindowFixture {
protected:
    SetupWindow()
    {
        files.Write(path, Before);
        Start();
    }

    void MakeKey52DoubleHorizontal()
    {
        InDialog<frmKeyb>([this] { Click(StripButton::Master); },
                          [](frmKeyb& form) {
                              Press(form, "Keys51");
                              Press(form, "KeyTypeOption2");
                              Press(form, "Back");
                          });
    }
};

TEST_F(SetupWindow, OpenChangeAKeySaveClose)
{
    dialogs.choices.push_back({path, PathFromQString(folder.path()), 1});
    Trigger(Command::FileMenuOpen);
    EXPECT_EQ(dialogs.asked.at(0).filters,
              "Setup files (*.dat)|*.dat|Text files (*.txt)|*.txt|All files (*.*)|*.*");
    frmConfig* setup = window->ActiveSetup();
    ASSERT_NE(setup, nullptr);
    EXPECT_EQ(setup->windowTitle(), "till[*]");
    EXPECT_EQ(setup->Session().settings.PanelIndex, 1);
    EXPECT_EQ(setup->Session().settings.FileName, LowerCase(path));
    for (const auto& [button, shown] : {std::pair{StripButton::Master, true},
                                        {StripButton::Backlight, true},
                                        {StripButton::KM064, false},
                                        {StripButton::MCR, true}})
        EXPECT_EQ(setup->Strip().Button(button).isVisibleTo(setup), shown) << static_cast<int>(button);

    // Quit without a change changes nothing, a part of the keyboard opens nothing.
    InDialog<frmKeyb>([this] { Click(StripButton::Master); }, [](frmKeyb& form) { Press(form, "Back"); });
    Click(StripButton::Backlight);
    EXPECT_FALSE(setup->IsChanged());

    MakeKey52DoubleHorizontal();
    EXPECT_TRUE(setup->isWindowModified());
    Trigger(Command::FileMenuSave);
    EXPECT_FALSE(setup->isWindowModified());
    EXPECT_EQ(files.Read(path), After);
    EXPECT_EQ(files.Read(PathFromQString(folder.path()) + "/Till.bak"), Before);

    Trigger(Command::FileMenuClose);
    EXPECT_EQ(window->ActiveSetup(), nullptr);
    EXPECT_TRUE(prompt.shown.empty());
}

TEST_F(SetupWindow, UndoTakesTheChangeAndTheMarkBack)
{
    window->OpenFiles({PathToQString(path)});
    const SetupDocument opened = window->ActiveSetup()->Session().document;
    MakeKey52DoubleHorizontal();
    EXPECT_NE(window->ActiveSetup()->Session().document, opened);
    Trigger(Command::EditMenuUndo);
    EXPECT_EQ(window->ActiveSetup()->Session().document, opened);
    EXPECT_FALSE(window->ActiveSetup()->isWindowModified());
    // Opening what is open brings it forward.
    window->OpenFiles({PathToQString(path)});
    EXPECT_EQ(window->AllSetups().size(), 1U);
}

TEST_F(SetupWindow, CloseQuestionSavesKeepsOrDiscards)
{
    window->OpenFiles({PathToQString(path)});
    MakeKey52DoubleHorizontal();
    prompt.answers = {Answer::Cancel};
    Trigger(Command::FileMenuClose);
    ASSERT_NE(window->ActiveSetup(), nullptr);
    // The main window asks too, and stays.
    prompt.answers = {Answer::Cancel};
    window->close();
    EXPECT_TRUE(window->isVisible());
    prompt.answers = {Answer::Yes};
    Trigger(Command::FileMenuClose);
    EXPECT_EQ(window->ActiveSetup(), nullptr);
    EXPECT_EQ(files.Read(path), After);
    EXPECT_EQ(prompt.shown.size(), 3U);
}

TEST_F(SetupWindow, WhatIsSavedOnTheWayToACancelledExitIsNoLongerChanged)
{
    const std::string other = PathFromQString(folder.path()) + "/Other.dat";
    files.Write(other, Before);
    window->OpenFiles({PathToQString(path)});
    MakeKey52DoubleHorizontal();
    window->OpenFiles({PathToQString(other)});
    MakeKey52DoubleHorizontal();
    prompt.answers = {Answer::Yes, Answer::Cancel};
    window->close();
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(window->AllSetups().at(0)->isWindowModified());
    EXPECT_TRUE(window->AllSetups().at(1)->isWindowModified());
    EXPECT_EQ(files.Read(path), After);
}

TEST_F(SetupWindow, FilesWaitWhileADialogIsOpen)
{
    window->OpenFiles({PathToQString(path)});
    files.Write(PathFromQString(folder.path()) + "/Other.dat", Before);
    InDialog<frmKeyb>([this] { Click(StripButton::Master); },
                      [this](frmKeyb& form) {
                          window->OpenFiles({folder.path() + "/Other.dat"});
                          EXPECT_EQ(window->AllSetups().size(), 1U);
                          Press(form, "Back");
                      });
    QApplication::processEvents();
    EXPECT_EQ(window->AllSetups().size(), 2U);
}

TEST_F(SetupWindow, FailedWriteKeepsTheWindowUnlessTheUserLetsItGo)
{
    const auto saveInto = [&](const std::string& name) {
        dialogs.choices.push_back({PathFromQString(folder.path()) + name, PathFromQString(folder.path()), 1});
    };
    Trigger(Command::FileMenuNew);
    EXPECT_EQ(window->ActiveSetup()->windowTitle(), "PosConfiguration1[*]");
    saveInto("/missing/x");
    Trigger(Command::FileMenuSave);
    ASSERT_EQ(prompt.shown.size(), 1U);
    EXPECT_EQ(prompt.shown[0].body,
              "File " + PathFromQString(folder.path()) +
                  "/missing/x.dat\r\nNo such file or directory\r\n\r\nThe file could not be saved.");
    EXPECT_TRUE(window->ActiveSetup()->Session().settings.FileName.empty());
    saveInto("/New Till");
    Trigger(Command::FileMenuSave);
    EXPECT_EQ(window->ActiveSetup()->windowTitle(), "new till.dat[*]");
    EXPECT_EQ(files.Read(PathFromQString(folder.path()) + "/new till.dat"),
              "[Kelvora]\r\nVersion = 2.0\r\n\r\n");
    // Another file is replaced only after a question.
    saveInto("/Till.dat");
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
    EXPECT_TRUE(window->ActiveSetup()->Session().document.Modules.empty());
    Trigger(Command::FileMenuSave);
    EXPECT_EQ(dialogs.asked.size(), 1U);
    EXPECT_EQ(files.Read(path), "[KM064]\r\n[KM096]\r\n");
}

TEST_F(SetupWindow, CommandsFollowTheWindowInFront)
{
    const auto enabled = [&](Command command) { return window->Actions()[command].isEnabled(); };
    EXPECT_TRUE(enabled(Command::FileMenuNew) && enabled(Command::FileMenuOpen));
    EXPECT_FALSE(enabled(Command::FileMenuSave) || enabled(Command::LayoutMenuAddKBMASTER));
    Trigger(Command::FileMenuNew);
    EXPECT_TRUE(enabled(Command::FileMenuSave) && enabled(Command::LayoutMenuAddKBMASTER));
    EXPECT_FALSE(enabled(Command::LayoutMenuAddMCR) || enabled(Command::LayoutMenuDel));
    window->OpenFiles({PathToQString(path)});
    EXPECT_TRUE(enabled(Command::LayoutMenuAddKB64) && enabled(Command::LayoutMenuDel));
    EXPECT_FALSE(enabled(Command::LayoutMenuAddKBMASTER) || enabled(Command::LayoutMenuAddMCR));
    Trigger(Command::WindowMenuCloseAll);
    EXPECT_FALSE(enabled(Command::FileMenuSave) || enabled(Command::LayoutMenuAddKB64));
}

TEST_F(SetupWindow, ClosingTakesTwoSecondsAndWaitsForARunningOperation)
{
    window->OpenFiles({PathToQString(path)});
    window->Status().ShowOperation(" Line Scan + Flash Upload");
    window->close();
    EXPECT_TRUE(window->isVisible());
    window->Status().ShowOperation(ToQString(IdleText(program.texts)));
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
