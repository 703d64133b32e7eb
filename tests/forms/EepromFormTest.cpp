#include "eeprom/forms/frmEeprom.h"

#include "comms/forms/frmAbort.h"
#include "eeprom/ScriptedPort.h"
#include "eeprom/forms/WriteQuestionDialog.h"
#include "ports/PortFormsFixture.h"

namespace kelvora {

class EepromForm : public PortFormsFixture {
protected:
    EepromForm()
    {
        settings.CommsPort = 2;
        form = std::make_unique<frmEeprom>(desk, settings, port, "/data");
        QObject::connect(form.get(), &frmEeprom::busyChanged, [this] { busy.push_back(operation.IsBusy()); });
        form->show();
        QApplication::setActiveWindow(form.get());
    }

    QPushButton& Button(const std::string& name) const { return Find<QPushButton>(*form, name + "Command"); }
    void Press(const char* name) const { Button(name).click(); }
    QComboBox& NewDev(int row) const { return Find<QComboBox>(*form, "NewDev" + std::to_string(row)); }
    std::string Label(const std::string& name) const { return Says(*form, name); }
    bool IsShown(const char* name) const { return Find<QWidget>(*form, name).isVisible(); }

    /// The enabled ones of the buttons Back, Next, Cancel and Update by their first letters.
    std::string Enabled() const
    {
        std::string letters;
        for (const char* name : {"Back", "Next", "Cancel", "Update"})
            if (Button(name).isVisible() && Button(name).isEnabled())
                letters += *name;
        return letters;
    }

    void Choose(int row, int identity)
    {
        NewDev(row).setCurrentIndex(identity);
        emit NewDev(row).activated(identity);
    }

    /// Presses a button that brings up the question before a write, and answers it. The question's texts.
    WriteQuestion Ask(const char* button, bool yes)
    {
        WriteQuestion asked;
        InDialog<WriteQuestionDialog>([&] { Press(button); },
                                      [&](WriteQuestionDialog& dialog) {
                                          asked = {Says(dialog, "Question"), Says(dialog, "Table")};
                                          // Enter is No, and so is Esc.
                                          QTest::keyClick(dialog.focusWidget(),
                                                          yes ? Qt::Key_Escape : Qt::Key_Return);
                                          EXPECT_EQ(dialog.result(), QDialog::Rejected);
                                          if (yes)
                                              dialog.accept();
                                      });
        return asked;
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

    ScriptedPort port{loop};
    RunningOperation operation;
    OperationNotes notes{nullptr, lines, texts};
    WizardDesk desk{userFiles, operation, notes, loop};
    PosCfg settings{SetupMode::New, 1};
    std::vector<bool> busy;
    std::unique_ptr<frmEeprom> form;
};

const std::string Written = Bytes("\x02\x0C\x00\xFA\x00\xAA\xAA\x55\xBF\x00\x00\x00\x00\x00\x10\x03");

TEST_F(EepromForm, GoesFromPageToPage)
{
    EXPECT_EQ(Enabled(), "NC");
    EXPECT_EQ(Label("PortLabel"), " COM2");
    QTest::keyClick(form->focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(IsShown("WizFrame1"));
    EXPECT_EQ(Enabled(), "BNC");
    EXPECT_FALSE(port.IsOpen());
    Attach(port, {CompositeReply});
    loop.After(std::chrono::milliseconds(100), [&] {
        EXPECT_TRUE(IsShown("StopCommand"));
        QTest::keyClick(form->focusWidget(), Qt::Key_Return);
        QTest::keyClick(form->focusWidget(), Qt::Key_Space);
    });
    QTest::keyClick(form->focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(IsShown("Info30") && IsShown("Info31"));
    EXPECT_FALSE(IsShown("Outcome")) << "the key that begins the search does not end it";
    EXPECT_EQ(Label("PortLabel"), " COM2: 9600,n,8,1");
    EXPECT_TRUE(IsUsable(*form, "PortLabel"));
    EXPECT_EQ(operation.Status(), "EEPROM wizard on COM2");
    EXPECT_EQ(Enabled(), "BNC");
    EXPECT_EQ(busy, std::vector{true});
    Press("Next");
    EXPECT_EQ(Enabled(), "BC");
    EXPECT_EQ(Label("DevInfo0"), "KM96CM");
    EXPECT_EQ(Label("EepromInfo0"), "AA 55 D6 17 FF FF 04 00");
    Press("Back");
    Press("Back");
    EXPECT_FALSE(port.IsOpen() || IsUsable(*form, "PortLabel"));
    EXPECT_EQ(Label("PortLabel"), " COM2");
    EXPECT_EQ(operation.Status(), "");
    EXPECT_EQ(busy, (std::vector{true, false}));
    Press("Cancel");
    EXPECT_FALSE(form->isVisible());
    EXPECT_TRUE(prompt.shown.empty());
}

TEST_F(EepromForm, ChoiceThatDiffersCanBeWritten)
{
    GoToTable();
    EXPECT_EQ(NewDev(0).currentIndex(), 0);
    EXPECT_EQ(Label("DevInfo1"), "LCD (unlit)");
    EXPECT_EQ(NewDev(1).currentIndex(), -1);
    EXPECT_EQ(Label("DevInfo2"), "UNKNOWN");
    EXPECT_FALSE(NewDev(2).isEnabled() || NewDev(3).isEnabled());
    EXPECT_EQ(Enabled(), "BC");
    QTest::keyClick(&NewDev(0), Qt::Key_Return);
    EXPECT_TRUE(IsShown("WizFrame3")) << "Enter in a list presses no button";
    Choose(0, 3);
    EXPECT_EQ(Enabled(), "BCU");
    EXPECT_THAT(Ask("Update", false).table, StartsWith("* Address 0: KM96CM >> KM64, changed\n"));
    EXPECT_EQ(Enabled(), "BCU");
    EXPECT_TRUE(files.content.empty());
    Choose(0, 0);
    EXPECT_EQ(Enabled(), "BC");
    Choose(1, 2);
    EXPECT_EQ(Enabled(), "BCU");
    Choose(1, NewDev(0).count());
    EXPECT_EQ(NewDev(1).currentIndex(), -1) << "taken back";
    EXPECT_EQ(Enabled(), "BC");
}

TEST_F(EepromForm, TableShowsWhatTheModulesHoldAfterAWrite)
{
    GoToTable();
    port.answers[Written] = {{{20, "\x06"}}};
    port.answers[ReadRequest[0]] = {Reply(SlaveReply), Reply(CompositeReply)};
    Choose(0, 3);
    Ask("Update", true);
    EXPECT_THAT(
        prompt.TakeBodies(),
        ElementsAre("Module EEPROM data has been updated\r\n\r\nPress \"OK\" to display new EEPROM data",
                    "Communications error encountered during EEPROM read"));
    EXPECT_EQ(Label("DevInfo0"), "KM64");
    EXPECT_EQ(Enabled(), "BC");
    ASSERT_EQ(files.content.size(), 1U);
    const auto [copy, text] = *files.content.begin();
    EXPECT_EQ(Label("SavedInfo"), copy);

    // Written back but for what the line cannot take, refused by the module, and read again.
    port.answers[Bytes("\x02\x0C\x00\xFA\x00\xAA\xAA\x55\xD6\x17\xFF\xFF\x04\x00\x6A\x03")] = {
        {{20, "\x15"}}};
    files.content[copy] = text.substr(0, text.find("1: ")) + "2: AA 55 BF 00 00 00 00 00\n";
    dialogs.choices = {{copy, {}, 1}};
    const std::string leftOut = "Not read from this line, so not written: 2";
    EXPECT_THAT(Ask("WriteBack", true).text,
                AllOf(StartsWith("Saved copy: 20"), HasSubstr(", COM2: 9600,n,8,1\n" + leftOut)));
    EXPECT_THAT(prompt.TakeBodies(),
                ElementsAre("MID NAK response indicates LRC error",
                            "Communications error encountered during EEPROM write\r\n\r\n"
                            "Press \"OK\" to check EEPROM data:\r\nAddresses that failed: 0\r\n" +
                                leftOut,
                            testing::_));
    EXPECT_EQ(Label("DevInfo0"), "KM96CM") << "as read, not as acknowledged";
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
        EXPECT_EQ(Find<QProgressBar>(*form).maximum(), 0) << "no end is in sight";
        form->close();
        Press("Next");
        form->EepromWizard(0);
        QTest::keyClick(form->focusWidget(), Qt::Key_Escape);
        const auto& abort = Find<frmAbort>(*form);
        ASSERT_TRUE(abort.isVisible());
        EXPECT_FALSE(operation.IsStopAsked()) << "Esc asks";
        kelvora::Press(abort, "AbortCommand");
    });
    Press("Next");
    EXPECT_EQ(during, "") << "nothing else can be done";
    EXPECT_TRUE(form->isVisible() && IsShown("WizFrame2"));
    EXPECT_EQ(Label("Outcome"), "The search was stopped. Only the modules that were found so far are shown.");
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
    Press("Next");
    const std::string again =
        "\n\nCheck the cables, the power and the port. \"<< Back\" leads to a new search.";
    const auto check = [&](const std::string& reason, const std::vector<std::string>& says,
                           const std::string& page, const std::string& enabled, bool opens, bool stopped) {
        port.opens = opens;
        form->EepromWizard(1);
        if (stopped)
            loop.After(std::chrono::milliseconds(60), [&] { Press("Stop"); });
        form->EepromWizard(2);
        EXPECT_EQ(prompt.TakeBodies(), says) << reason;
        EXPECT_EQ(IsShown("Outcome") ? Label("Outcome") : "", page) << reason;
        EXPECT_FALSE(IsShown("Info30") || IsShown("Info31")) << reason;
        EXPECT_EQ(Enabled(), enabled) << reason;
        EXPECT_EQ(form->focusWidget(), &Button(opens ? "Back" : "Cancel")) << reason;
        EXPECT_EQ(operation.IsBusy(), opens) << reason;
        if (enabled != "BNC")
            return;
        Press("Next");
        EXPECT_TRUE(IsShown("NothingRead"));
        EXPECT_EQ(form->focusWidget(), &Button("Back"));
        EXPECT_FALSE(Button("WriteBack").isEnabled());
    };
    check("no modules", {"No MID modules found"}, "No MID modules found" + again, "BNC", true, false);
    check("stopped", {}, "The search was stopped. No modules were found so far." + again, "BC", true, true);
    check("not opened", {"Unable to open serial line\r\nDevice or resource busy"},
          "Unable to open serial line\nDevice or resource busy", "C", false, false);
}

TEST_F(EepromForm, LostLineIsToldOnceAndLeadsToTheCables)
{
    const auto lose = [&](int ms) { loop.After(std::chrono::milliseconds(ms), [&] { port.Close(); }); };
    const std::string lost = "The serial line was lost. Check the adapter and the cables, then search again.";
    for (const int after : {50, 1000}) {
        Attach(port, {CompositeReply, CompositeReply, SlaveReply});
        form->EepromWizard(1);
        lose(after);
        Press("Next");
        EXPECT_THAT(prompt.TakeBodies(), ElementsAre(StartsWith(lost))) << after;
        EXPECT_TRUE(IsShown("WizFrame1")) << after;
        EXPECT_EQ(Enabled(), "BNC") << after;
        EXPECT_FALSE(operation.IsBusy()) << after;
    }
    form->EepromWizard(0);
    GoToTable();
    Choose(0, 3);
    lose(20);
    Ask("Update", true);
    EXPECT_THAT(prompt.TakeBodies(),
                ElementsAre(AllOf(StartsWith(lost), HasSubstr("Addresses that failed: 0\r\n"),
                                  EndsWith(files.content.begin()->first))));
    EXPECT_TRUE(IsShown("WizFrame1"));
}

}  // namespace kelvora
