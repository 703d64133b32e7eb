#include "layout/SetupSession.h"

#include <gtest/gtest.h>

#include "fakes/FakeEventLoop.h"
#include "fakes/FakeFileDialogs.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakePrompt.h"
#include "flash/DumpText.h"
#include "layout/CommandRules.h"
#include "layout/FlashTools.h"
#include "layout/LayoutCommands.h"
#include "layout/ScanTexts.h"
#include "layout/SetupDesk.h"
#include "layout/UndoStep.h"
#include "ports/Connection.h"
#include "setup/SetupErrorText.h"

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
    EXPECT_FALSE(session.IsScanning());
    for (const auto& row : rows) {
        dialogs.choices.push_back({row.typed, "/t", row.filter});
        EXPECT_TRUE(session.SaveAs()) << row.typed;
        EXPECT_EQ(session.File().path, row.saved);
        EXPECT_EQ("/" + session.settings.Name,
                  std::string(row.saved).substr(std::string(row.saved).rfind('/')));
    }
    EXPECT_EQ(dialogs.asked.at(0).offeredName, "PosConfiguration1") << "a first name is that of the window";
    EXPECT_EQ(dialogs.asked.at(1).offeredName, "/t/till 2.5.dat");

    // Where nothing was written, no dialog begins, and nothing is held.
    session.document = PlaceModule({}, ModuleKind::KM096, 0);
    const std::string setup = "[KM096]\r\n", dump = DumpAddress(0);
    files.content = {{"/d/x.dat", setup}, {"/d/x.bak", dump}, {"/d/y.mem", dump}, {"/d/y.bak", setup}};
    files.unwritable = {"/proc/x.dat", "/proc/y.mem"};
    for (const std::string folder : {"/proc", "/d"}) {
        dialogs.choices = {{folder + "/x", folder, 1}, {folder + "/y", folder, 1}};
        prompt.answers = {Answer::Yes, Answer::No, Answer::Yes, Answer::No};
        EXPECT_FALSE(session.SaveAs());
        DumpSetupImage(session);
        EXPECT_EQ(session.settings.OutInitDir, "/t") << folder;
    }
    EXPECT_EQ(session.File().path, "/t/till.txt");
    EXPECT_EQ(files.content.at("/d/x.bak"), dump) << "another file's backup, and the answer was No";
    dialogs.choices = {{"/d/y", "/d", 1}};
    prompt.answers = {Answer::Yes, Answer::Yes};
    DumpSetupImage(session);
    EXPECT_EQ(session.settings.OutInitDir, "/d");
    EXPECT_EQ(files.content.at("/d/y.bak"), dump);
}

TEST_F(Session, AFileCountsWhereItHoldsTheSetup)
{
    const SetupFile file = MakeSetupFile("/t/a.dat");
    files.content[file.path] = "no setup";
    EXPECT_FALSE(OpenSetup(userFiles, file) || ReadOtherSetup(userFiles, file.path));
    prompt.answers = {Answer::Yes};
    EXPECT_EQ(OpenSetup(userFiles, file).value().name, "a");
    SetupSession session(desk, SetupMode::New);
    session.Load(OpenedSetup{PlaceModule({}, ModuleKind::MCR, 0), file, "a"});
    const auto noted = [&] {
        OperationNote note = notes.Begin(JournalOperation::Verify, 1);
        NoteFile(note, session);
        return note.Entry().file;
    };
    EXPECT_EQ(noted(), "");
    ASSERT_TRUE(session.Save() && ReadOtherSetup(userFiles, file.path));
    EXPECT_EQ(noted(), file.path);
    session.document = {};
    EXPECT_EQ(noted(), "") << "changed since";
    files.unwritable = {file.path};
    for (const Answer closes : {Answer::Yes, Answer::No}) {
        prompt.answers = {Answer::Yes, Answer::Ok, closes};
        EXPECT_EQ(session.AskToClose(true), closes == Answer::Yes ? Closing::Unsaved : Closing::Stay);
    }
}

TEST(ScanTexts, TellWhatToMindOfTheSetupThatCame)
{
    ScanOutcome scan;
    const MessageCatalogue catalogue;
    const auto caption = [&](const MessageId& id) { return "\r\n" + catalogue.Caption(id); };
    const auto check = [&](const char* window, const std::vector<std::string>& expected) {
        std::vector<std::string> told;
        for (const LaterMessage& message : DescribeScan(catalogue, {1, "", 0}, scan, window))
            told.push_back(std::to_string(message.message.id) + " " + message.extra);
        EXPECT_EQ(told, expected);
    };
    scan.line.deviceMap = "\xD6\x17\x04";
    scan.document = ReadDeviceMap(scan.line.deviceMap);
    check("W", {});
    scan.document = ReadDeviceMap("\xD6\xFF\xFF\x04\xFF");
    check("", {"896 COM1" + caption(Message::ScanUnknown) + " 2, 3, 5" + caption(Message::ScanParts)});
    scan.line.outcome = LineOutcome::Stopped;
    scan.document = {};
    check("", {"660 COM1"});
    check("W", {"660 W, COM1" + caption(Message::ScanNoImage)});
    scan.refusal = DeviceMapError(SetupErrorNumber::LineRejected, Expected::Room, 1, 3);
    check("", {"889 COM1\r\n" + DescribeMapError(catalogue, *scan.refusal)});
}

TEST(CommandRules, WhatRunsDisablesEverythingAndToolsFollowTheScan)
{
    const SetupDocument document;
    CommandSituation situation;
    situation.canScan = true;
    CommandState expected{.program = true, .scan = true};
    EXPECT_EQ(CommandStateOf(situation), expected);
    situation.modules = &document.Modules;
    situation.focused = StripButton::Code4;
    expected.setup = expected.line = expected.copy = expected.options = true;
    expected.layout = LayoutStateOf({});
    EXPECT_EQ(CommandStateOf(situation), expected);
    situation.focused = StripButton::KM064;
    situation.canScan = false;
    expected.scan = expected.line = expected.options = false;
    EXPECT_EQ(CommandStateOf(situation), expected);
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
    EXPECT_TRUE(step.Turn(session));
    EXPECT_EQ(session.File().path, "/t/a.dat");
    EXPECT_TRUE(session.document.Modules.empty());
    save("/t/c.dat");
    step.Turn(session);
    EXPECT_EQ(session.File().path, "");
    EXPECT_FALSE(session.document.Modules.empty());
    step.Turn(session);
    EXPECT_EQ(session.File().path, "/t/c.dat");
    EXPECT_EQ(session.HeldAs().saved + "\r\n", files.content.at("/t/c.dat"));
    step.Turn(session);
    desk.isOpenElsewhere = [](auto&&...) { return true; };
    EXPECT_FALSE(step.Turn(session));
    EXPECT_EQ(session.File().path, "") << "another window has it";
    EXPECT_TRUE(UndoStep(session, scanned).Turn(session));
}

}  // namespace kelvora
