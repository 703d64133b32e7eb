#include "layout/SetupSession.h"

#include <gtest/gtest.h>

#include "fakes/FakeEventLoop.h"
#include "fakes/FakeFileDialogs.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakePrompt.h"
#include "layout/CommandRules.h"
#include "layout/LayoutCommands.h"
#include "layout/SetupDesk.h"
#include "layout/UndoStep.h"
#include "ports/Connection.h"

namespace kelvora {

// What setup windows work with, behind which nothing is real.
class Session : public testing::Test {
protected:
    FakeFiles files;
    FakePrompt prompt;
    FakeFileDialogs dialogs;
    FakeEventLoop loop;
    Texts texts{prompt};
    PosCfg defaults{SetupMode::New, 0};
    UserFiles userFiles{texts, files, dialogs, defaults.OutInitDir};
    Lines lines{{}, loop};
    RunningOperation operation;
    OperationNotes notes{nullptr, lines, texts};
    SetupDesk desk{userFiles, lines, operation, notes, loop, defaults};
};

TEST_F(Session, ATypedNameKeepsItsDotsAndGetsAnEndingThatTheDialogKnows)
{
    const struct {
        const char *typed, *saved;
        int filter;
    } rows[]{
        {"/t/Till 2.5", "/t/till 2.5.dat", 1}, {"/t/till 2.5", "/t/till 2.5.txt", 2},
        {"/t/Till.DAT", "/t/till.dat", 2},     {"/t.d/till", "/t.d/till.dat", 3},
        {"/t/till.txt", "/t/till.txt", 1},
    };
    SetupSession session(desk, SetupMode::New);
    session.Load({});
    for (const auto& row : rows) {
        dialogs.choices.push_back({row.typed, "/t", row.filter});
        EXPECT_TRUE(session.SaveAs()) << row.typed;
        EXPECT_EQ(session.File().path, row.saved);
        EXPECT_EQ("/" + session.settings.Name,
                  std::string(row.saved).substr(std::string(row.saved).rfind('/')));
    }
    EXPECT_EQ(dialogs.asked.at(0).offeredName, "PosConfiguration1") << "a first name is that of the window";
    EXPECT_EQ(dialogs.asked.at(1).offeredName, "/t/till 2.5.dat");

    // Where nothing could be written, no dialog begins.
    files.unwritable = {"/proc/x.dat"};
    dialogs.choices.push_back({"/proc/x", "/proc", 1});
    EXPECT_FALSE(session.SaveAs());
    EXPECT_EQ(session.settings.OutInitDir, "/t");
}

TEST(CommandRules, WhatRunsDisablesEverythingAndToolsFollowTheScan)
{
    const SetupDocument document;
    CommandSituation situation;
    EXPECT_TRUE(CommandStateOf(situation).fileOpen);
    EXPECT_FALSE(CommandStateOf(situation).fileSave || CommandStateOf(situation).layout.addMaster);
    situation.modules = &document.Modules;
    situation.focused = StripButton::Code4;
    situation.canScan = true;
    const CommandState open = CommandStateOf(situation);
    EXPECT_TRUE(open.fileSave && open.layout.addMaster && open.fileScan && open.rescan && open.flash &&
                open.options);
    situation.focused = StripButton::KM064;
    situation.canScan = false;
    EXPECT_FALSE(CommandStateOf(situation).options || CommandStateOf(situation).flash);
    for (bool CommandSituation::*running : {&CommandSituation::busy, &CommandSituation::placing}) {
        CommandSituation held = situation;
        held.*running = true;
        EXPECT_EQ(CommandStateOf(held), CommandState{});
    }
}

TEST_F(Session, ASetupIsBuiltOverTheImageOfItsOwnPortAlone)
{
    SetupSession session(desk, SetupMode::New);
    EXPECT_FALSE(session.BaseImage());
    FlashImage image{};
    image[3000] = 7;
    // Whoever reads the flash alone does not ask again for the line: it is the same until an image says
    // otherwise.
    LineResult told;
    told.deviceMap = "\xBF\x03";
    told.terminalName = "TILL 7";
    session.HoldAsBase(image, told);
    session.HoldAsDevice(image, {});
    EXPECT_EQ(session.DeviceSource().deviceMap + session.DeviceSource().terminal, "\xBF\x03TILL 7");
    FlashImage foreign = image;
    foreign[128] = 3;
    session.HoldAsDevice(foreign, {});
    EXPECT_EQ(session.DeviceSource().deviceMap + session.DeviceSource().terminal, "");
    SelectPort(session.settings, 2);
    EXPECT_FALSE(session.BaseImage() || session.DeviceImage());
    SelectPort(session.settings, 1);
    ASSERT_TRUE(session.BaseImage());
    EXPECT_EQ(*session.BaseImage(), image);
    EXPECT_EQ(*session.DeviceImage(), foreign);
    SelectPort(session.settings, 2);
    session.HoldAsDevice(image, {});
    EXPECT_FALSE(session.BaseImage()) << "nothing was read from the other port that the setup goes with";
}

TEST_F(Session, AStepThatTookTheFileAwayGivesBackTheOneThatItWouldNowHave)
{
    SetupSession session(desk, SetupMode::New);
    session.Load({});
    const auto save = [&](const char* as) {
        dialogs.choices.push_back({as, "/t", 1});
        ASSERT_TRUE(session.SaveAs());
    };
    save("/t/a.dat");
    const SetupDocument scanned = PlaceModule({}, ModuleKind::KM096, 0);
    const WindowFile before = session.HeldAs();
    session.HoldAs({});
    UndoStep step(session, scanned, before);
    step.Turn(session);
    EXPECT_EQ(session.File().path, "/t/a.dat");
    EXPECT_TRUE(session.document.Modules.empty());
    save("/t/c.dat");
    step.Turn(session);
    EXPECT_EQ(session.File().path, "");
    EXPECT_FALSE(session.document.Modules.empty());
    step.Turn(session);
    EXPECT_EQ(session.File().path, "/t/c.dat");
    EXPECT_EQ(session.HeldAs().saved + "\r\n", files.content.at("/t/c.dat"));
}

}  // namespace kelvora
