#include "eeprom/forms/frmEeprom.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "eeprom/ScriptedPort.h"
#include "fakes/FakeFileDialogs.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakePrompt.h"
#include "platform/qt/Text.h"

namespace kelvora {
namespace {

class EepromForm : public testing::Test {
protected:
    EepromForm()
    {
        settings.CommsPort = 2;
        form = std::make_unique<frmEeprom>(program, settings, port, PathFromQString(folder.path()));
        form->onBusy = [this] { busy.push_back(program.busy); };
        form->show();
        QApplication::setActiveWindow(form.get());
    }

    template <class Widget>
    Widget* Find(const std::string& name) const
    {
        return form->findChild<Widget*>(QString::fromStdString(name));
    }
    QPushButton* Button(const char* name) const { return Find<QPushButton>(std::string(name) + "Command"); }
    void Press(const char* name) const { Button(name)->click(); }
    std::string Label(const std::string& name) const { return FromQString(Find<QLabel>(name)->text()); }
    bool IsShown(const char* name) const { return Find<QWidget>(name)->isVisible(); }

    /// The enabled ones of the buttons Back, Next, Cancel and Update by their first letters.
    std::string Enabled() const
    {
        std::string letters;
        for (const char* name : {"Back", "Next", "Cancel", "Update"})
            if (Button(name)->isVisible() && Button(name)->isEnabled())
                letters += *name;
        return letters;
    }

    void Choose(int row, int identity)
    {
        auto* list = Find<QComboBox>("NewDev" + std::to_string(row));
        list->setCurrentIndex(identity);
        emit list->activated(identity);
    }

    /// A composite keyboard, a display without light that is no part of it, and a module that is not read.
    void GoToTable()
    {
        Attach(port, {CompositeReply, UnlitReply, SlaveReply});
        port.answers[ReadRequest[2]] = {{{20, "\x06"}}};
        for (int step = 0; step < 3; ++step)
            Press("Next");
        prompt.shown.clear();
    }

    QTemporaryDir folder;
    FakeEventLoop loop;
    ScriptedPort port{loop};
    FakeFiles files;
    FakePrompt prompt;
    FakeFileDialogs dialogs;
    Program program{{files, prompt, dialogs, loop, {}}, {}};
    PosCfg settings{SetupMode::New, 1};
    std::vector<bool> busy;
    std::unique_ptr<frmEeprom> form;
};

const std::string Written = Bytes("\x02\x0C\x00\xFA\x00\xAA\xAA\x55\xBF\x00\x00\x00\x00\x00\x10\x03");

TEST_F(EepromForm, GoesFromPageToPage)
{
    EXPECT_EQ(FromQString(form->windowTitle()), "EEPROM device ID programmer");
    EXPECT_EQ(Label("Info12"), "Press \"Cancel\" to exit this function or \"Next >>\" to continue");
    EXPECT_EQ(Enabled(), "NC");
    QTest::keyClick(form->focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(IsShown("WizFrame1"));
    EXPECT_EQ(Label("Info23"), "Press \"\"Next >>\" when ready to continue");
    EXPECT_EQ(Enabled(), "BNC");
    EXPECT_FALSE(port.IsOpen());
    Attach(port, {CompositeReply});
    QTest::keyClick(form->focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(IsShown("Info30") && IsShown("Info31"));
    EXPECT_EQ(Label("PortLabel"), " COM2: 9600,n,8,1");
    EXPECT_EQ(Enabled(), "BNC");
    EXPECT_EQ(busy, std::vector{true});
    Press("Next");
    EXPECT_EQ(Enabled(), "BC");
    EXPECT_EQ(Label("DevInfo0"), "KM96CM");
    EXPECT_EQ(Label("EepromInfo0"), "AA 55 D6 17 FF FF 04 00");
    Press("Back");
    Press("Back");
    EXPECT_FALSE(port.IsOpen());
    EXPECT_EQ(busy, (std::vector{true, false}));
    Press("Cancel");
    EXPECT_FALSE(form->isVisible());
    EXPECT_TRUE(prompt.shown.empty());
}

TEST_F(EepromForm, ChoiceThatDiffersCanBeWritten)
{
    GoToTable();
    EXPECT_EQ(Find<QComboBox>("NewDev0")->currentIndex(), 0);
    EXPECT_EQ(Label("DevInfo1"), "LCD (unlit)");
    EXPECT_EQ(Find<QComboBox>("NewDev1")->currentIndex(), -1);
    EXPECT_EQ(Label("DevInfo2"), "UNKNOWN");
    EXPECT_FALSE(Find<QComboBox>("NewDev2")->isEnabled() || Find<QComboBox>("NewDev3")->isEnabled());
    EXPECT_EQ(Enabled(), "BC");
    QTest::keyClick(Find<QComboBox>("NewDev0"), Qt::Key_Return);
    EXPECT_TRUE(IsShown("WizFrame3")) << "Enter in a list presses no button";
    Choose(0, 3);
    EXPECT_EQ(Enabled(), "BCU");
    Press("Update");
    ASSERT_EQ(prompt.shown.size(), 1U) << "asked, and No is the default";
    EXPECT_EQ(Enabled(), "BCU");
    EXPECT_TRUE(files.content.empty());
    Choose(0, 0);
    EXPECT_EQ(Enabled(), "BC");
}

TEST_F(EepromForm, TableShowsWhatTheModulesHoldAfterAWrite)
{
    GoToTable();
    port.answers[Written] = {{{20, "\x06"}}};
    port.answers[ReadRequest[0]] = {Reply(SlaveReply), Reply(CompositeReply)};
    Choose(0, 3);
    prompt.answers = {Answer::Yes};
    Press("Update");
    ASSERT_EQ(prompt.shown.size(), 3U) << "the question, the outcome, and the module that is not read";
    EXPECT_EQ(prompt.shown[1].body,
              "Module EEPROM data has been updated\r\n\r\nPress \"OK\" to display new EEPROM data");
    EXPECT_EQ(prompt.shown[2].body, "Communications error encountered during EEPROM read");
    EXPECT_EQ(Label("DevInfo0"), "KM64");
    EXPECT_EQ(Enabled(), "BC");
    ASSERT_EQ(files.content.size(), 1U);
    const auto [copy, text] = *files.content.begin();
    EXPECT_THAT(Label("SavedInfo"), testing::EndsWith(copy));

    // Written back, refused by the module, and read again.
    prompt.shown.clear();
    prompt.answers = {Answer::Yes};
    port.answers[Bytes("\x02\x0C\x00\xFA\x00\xAA\xAA\x55\xD6\x17\xFF\xFF\x04\x00\x6A\x03")] = {
        {{20, "\x15"}}};
    files.content[copy] = text.substr(0, text.find("1: "));
    dialogs.choices = {{copy, {}, 1}};
    Press("WriteBack");
    ASSERT_EQ(prompt.shown.size(), 4U);
    EXPECT_EQ(prompt.shown[1].body, "MID NAK response indicates LRC error");
    EXPECT_EQ(prompt.shown[2].body,
              "Communications error encountered during EEPROM write\r\n\r\n"
              "Press \"OK\" to check EEPROM data:\r\nAddresses that failed: 0");
    EXPECT_EQ(Label("DevInfo0"), "KM96CM") << "as read, not as acknowledged";
}

TEST_F(EepromForm, OnlyCopiesOfThisLineAreWrittenBack)
{
    GoToTable();
    const std::string head = "Kelvora module identities\nDate d\nLine l\n";
    for (const auto& [text, says] : std::vector<std::pair<std::string, std::string>>{
             {"[Kelvora]",
              "This file is not a saved copy of EEPROM data.\r\nLine 1: Expected here: "
              "\"Kelvora module identities\""},
             {head + "1: AA 55 00 1F 00 00 00 00\n2: AA 55 BF 00 00 00 00 00\n",
              "Nothing was written: these addresses of the file were not read from this line: 2"}}) {
        files.content["copy.txt"] = text;
        dialogs.choices = {{"copy.txt", {}, 1}};
        Press("WriteBack");
        EXPECT_EQ(prompt.shown.back().body, says);
    }
    EXPECT_EQ(prompt.shown.size(), 2U);
}

TEST_F(EepromForm, SearchBelow9600IsStoppedByTheUser)
{
    Attach(port, {SlaveReply});
    port.heardAt = "4800,n,8,1";
    Press("Next");
    std::string during;
    loop.After(std::chrono::seconds(2), [&] {
        during = Enabled();
        EXPECT_TRUE(IsShown("Repeats") && IsShown("StopCommand"));
        form->close();
        Press("Next");
        form->EepromWizard(0);
        QTest::keyClick(form->focusWidget(), Qt::Key_Escape);
    });
    Press("Next");
    EXPECT_EQ(during, "") << "nothing else can be done";
    EXPECT_TRUE(form->isVisible() && IsShown("WizFrame2") && IsShown("Stopped"));
    EXPECT_TRUE(prompt.shown.empty()) << "no box in the middle of a wait";
    EXPECT_EQ(Enabled(), "BNC");
    Press("Next");
    EXPECT_EQ(Label("DevInfo0"), "KM64");
    QTest::keyClick(form->focusWidget(), Qt::Key_Escape);
    ASSERT_EQ(prompt.shown.size(), 1U);
    EXPECT_TRUE(form->isVisible()) << "Esc tells about interruption, it does not close";
    Press("Cancel");
    EXPECT_EQ(port.Settings(), "9600,n,8,1") << "as before";
}

TEST_F(EepromForm, SearchThatFindsNothing)
{
    struct Row {
        std::string reason, says, enabled;
        bool opens, stopped;
    };
    Press("Next");
    for (const Row& row : std::vector<Row>{
             {"no modules", "No MID modules found", "BNC", true, false},
             {"stopped", "", "BC", true, true},
             {"not opened", "Unable to open serial line\r\nDevice or resource busy", "C", false, false},
             {"for a reason", "Unable to open serial line\r\n/dev/ttyS0", "C", false, false}}) {
        if (row.reason == "for a reason")
            form->describeFailure = [](const SerialPort& refused) { return refused.Device(); };
        prompt.shown.clear();
        port.opens = row.opens;
        form->EepromWizard(1);
        if (row.stopped)
            loop.After(std::chrono::milliseconds(60), [&] { Press("Stop"); });
        form->EepromWizard(2);
        EXPECT_EQ(prompt.shown.empty() ? "" : prompt.shown[0].body, row.says) << row.reason;
        EXPECT_EQ(Enabled(), row.enabled) << row.reason;
        EXPECT_EQ(program.busy, row.opens) << row.reason;
    }
}

}  // namespace
}  // namespace kelvora
