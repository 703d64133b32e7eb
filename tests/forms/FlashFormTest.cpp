#include "comms/forms/frmAbort.h"
#include "flash/DumpText.h"
#include "flash/forms/BackupsDialog.h"
#include "flash/forms/ChangesDialog.h"
#include "flash/forms/ComparisonDialog.h"
#include "flash/forms/ImageTable.h"
#include "forms/MainWindowFixture.h"
#include "keymap/Models.h"
#include "layout/ModuleOptions.h"

namespace kelvora {

class FlashForm : public MainWindowFixture {
protected:
    FlashForm() : MainWindowFixture(true)
    {
        Start();
        Run(Command::FileMenuScan);
        fresh = line.Memory().flash;
    }

    // The simulated device comes with a fiscal keyboard.
    void ClearFiscal()
    {
        SetupDocument& document = Session().document;
        MasterOptions options = ReadMasterOptions(document).value();
        options.fiscal = false;
        document = WithOptions(document, options);
    }

    // Runs the command and answers the question that it comes to.
    void RunAndAnswer(Command command, QDialogButtonBox::StandardButton answer)
    {
        InDialog<ChangesDialog>(command, [&](ChangesDialog& dialog) { Decide(dialog, answer); });
    }
    static void Decide(ChangesDialog& dialog, QDialogButtonBox::StandardButton answer)
    {
        Find<QDialogButtonBox>(dialog).button(answer)->click();
    }

    std::string LastBody() const { return prompt.shown.at(prompt.shown.size() - 1).body; }
    const FlashImage& Flash() const { return line.Memory().flash; }

    FlashImage fresh{};
};

TEST_F(FlashForm, DownloadAsksWithTheLineFreeAndWritesOnlyOnYes)
{
    ClearFiscal();
    InDialog<ChangesDialog>(Command::ToolsMenuFlashDownload, [&](ChangesDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle().toStdString(), "Flash Download: COM1");
        EXPECT_EQ(Says(dialog, "Changes"),
                  "This will change in the device:\n"
                  "0006: Composite Keyboard, fiscal keyboard: yes -> no");
        EXPECT_THAT(Says(dialog, "Backup"), HasSubstr("/backups/20"));
        EXPECT_TRUE(program.operation.IsBusy() && !IsEnabled(Command::FileMenuNew));
        EXPECT_FALSE(port.IsOpen() || QApplication::overrideCursor());
        window->close();
        EXPECT_FALSE(closed);
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    EXPECT_EQ(Flash(), fresh);
    EXPECT_TRUE(prompt.shown.empty());

    RunAndAnswer(Command::ToolsMenuFlashDownload, QDialogButtonBox::Yes);
    FlashImage expected = fresh;
    expected[6] ^= 1;
    EXPECT_EQ(Flash(), expected);
    EXPECT_EQ(*Session().DeviceImage(), expected);
    EXPECT_EQ(prompt.shown.at(0).title, "Flash Download");
    EXPECT_THAT(prompt.TakeBodies(), ElementsAre(StartsWith("The download is done.")));
}

TEST_F(FlashForm, TheQuestionTellsWhatTheDeviceCannotHold)
{
    SetupDocument& document = Session().document;
    McrOptions options = ReadMcrOptions(document).value();
    options.separators[1] = '#';
    document = WithOptions(document, options);
    // The keypad has a key there, whatever the setup says.
    document.Modules[FindModule(document.Modules, ModuleKind::ICCR).value()].KeyMap[0] = KeyType::NoKey;
    InDialog<ChangesDialog>(Command::ToolsMenuFlashDownload, [&](ChangesDialog& dialog) {
        EXPECT_THAT(Says(dialog, "Changes"),
                    HasSubstr("MCR, separator after track 2: none -> # (23)\n\n"
                              "The device cannot hold this; it is left out:\nICCR, Key "));
        InDialog<ComparisonDialog>([&] { Press(dialog, "Compare"); },
                                   [&](ComparisonDialog& comparison) {
                                       const auto& images = *Find<QTableView>(comparison, "Images").model();
                                       EXPECT_EQ(images.headerData(ImageTable::After, Qt::Horizontal),
                                                 "PosConfiguration 1");
                                   });
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(Flash(), fresh);
}

TEST_F(FlashForm, AStopEndsItAndAnOpenStopDialogGivesWayToTheQuestion)
{
    const auto abort = [&] { return window->findChild<frmAbort*>(); };
    const auto runWith = [&](const std::function<void()>& meanwhile) {
        QApplication::setActiveWindow(window.get());
        Trigger(Command::ToolsMenuFlashDownload);
        loop.After(std::chrono::milliseconds(3000), [&] {
            QTest::keyClick(window.get(), Qt::Key_Escape);
            EXPECT_TRUE(abort() && abort()->isVisible());
            meanwhile();
        });
        loop.Pass(std::chrono::milliseconds(0));
    };
    ClearFiscal();
    // No key form opens on the way.
    InDialog<ChangesDialog>([&] { runWith([&] { Click(StripButton::Master); }); },
                            [&](ChangesDialog&) { EXPECT_TRUE(!abort() || !abort()->isVisible()); });
    EXPECT_TRUE(prompt.shown.empty());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    runWith([&] { Press(*abort(), "AbortCommand"); });
    EXPECT_THAT(LastBody(), HasSubstr("\r\nThe work was stopped."));
    EXPECT_EQ(Flash(), fresh);
}

TEST_F(FlashForm, VerifySaysWhereItDiffersAndShowsBothImages)
{
    Run(Command::ToolsMenuFlashVerify);
    EXPECT_THAT(prompt.TakeBodies(), ElementsAre("The device's flash memory holds this setup."));
    ClearFiscal();
    Run(Command::ToolsMenuFlashVerify);
    EXPECT_EQ(prompt.shown.at(0).title, "Flash Verify");
    EXPECT_EQ(prompt.shown[0].style.defaultAnswer, Answer::No);
    const std::string differs =
        "The device does not hold this setup. The first difference is at address 0006 (hex)\r\n";
    EXPECT_THAT(prompt.TakeBodies(),
                ElementsAre(AllOf(StartsWith(differs), HasSubstr("fiscal keyboard: no -> yes\r\n"))));

    prompt.answers = {Answer::Yes};
    Run(Command::ToolsMenuFlashVerify);
    const auto* const shown = Opened<ComparisonDialog>();
    ASSERT_TRUE(shown && shown->isVisible() && !shown->isModal());
    EXPECT_EQ(Find<QListWidget>(*shown, "Differences").count(), 1);
    window->ActiveSetup()->CloseUnasked();
    Trigger(Command::FileMenuClose);
    EXPECT_FALSE(Opened<ComparisonDialog>());
}

TEST_F(FlashForm, DumpsAreWrittenAndKeepThePreviousFile)
{
    const std::string file = At("till.mem");
    Trigger(Command::ToolsMenuFlashDumpUpload);
    EXPECT_FALSE(files.Exists(file));

    Choose("Till");
    Trigger(Command::ToolsMenuFlashDumpUpload);
    FlashDump dump = ReadDump(files.Read(file));
    EXPECT_EQ(dump.image, fresh);
    EXPECT_EQ(dump.head.kind, DumpKind::Device);
    EXPECT_EQ(dump.head.deviceMap.value().deviceMap, "\xD6\x17\x04\xBF\x03\x08");
    EXPECT_FALSE(dump.head.terminal.empty());
    ClearFiscal();
    Choose("till.mem");
    prompt.answers = {Answer::Yes};
    Press(*window, "DUMP");
    dump = ReadDump(files.Read(file));
    EXPECT_EQ(dump.image[6], fresh[6] ^ 1);
    EXPECT_EQ(dump.head.kind, DumpKind::Setup);
    EXPECT_EQ(ReadDump(files.Read(At("till.bak"))).image, fresh);

    // A window that has read no device has no such image.
    prompt.shown.clear();
    Trigger(Command::FileMenuNew);
    Choose("Till");
    Trigger(Command::ToolsMenuFlashDumpUpload);
    EXPECT_EQ(LastBody(), Message::NoImageRead.fallback);
    EXPECT_EQ(dialogs.choices.size(), 1U);
}

TEST_F(FlashForm, ABackupIsComparedAndRestored)
{
    ClearFiscal();
    RunAndAnswer(Command::ToolsMenuFlashDownload, QDialogButtonBox::Yes);
    files.Write(At("backups/broken.mem"), "0000:00 12\r\n");
    const auto open = [&] { Trigger(Command::ToolsMenuFlashBackups); };

    InDialog<BackupsDialog>(open, [&](BackupsDialog& dialog) {
        auto& list = Find<QTreeWidget>(dialog, "Backups");
        ASSERT_EQ(list.topLevelItemCount(), 2);
        EXPECT_EQ(list.topLevelItem(0)->text(2), "whole");
        EXPECT_EQ(list.topLevelItem(0)->text(4), "Composite Keyboard, Slave Keyboard, MCR, ICCR");
        EXPECT_EQ(list.topLevelItem(1)->text(6), "broken.mem");
        EXPECT_TRUE(list.topLevelItem(1)->text(2).contains("Line 1: "));
        InDialog<ComparisonDialog>([&] { Press(dialog, "Compare"); },
                                   [&](ComparisonDialog& comparison) {
                                       EXPECT_EQ(Find<QListWidget>(comparison, "Differences").count(), 1);
                                   });
        QTest::keyClick(&list, Qt::Key_Down);
        EXPECT_FALSE(IsUsable(dialog, "Restore") || IsUsable(dialog, "Compare"));
    });

    // The list closes first; the question, which says what backup is meant, comes when the line has been
    // read.
    InDialog<BackupsDialog>(open, [&](BackupsDialog& dialog) { Press(dialog, "Restore"); });
    InDialog<ChangesDialog>([&] { loop.Pass(std::chrono::milliseconds(0)); },
                            [&](ChangesDialog& dialog) {
                                EXPECT_THAT(Says(dialog, "Question"), HasSubstr("\nCOM1, 20"));
                                Decide(dialog, QDialogButtonBox::Yes);
                            });
    EXPECT_EQ(Flash(), fresh);
    EXPECT_TRUE(LastBody().starts_with("The dump is restored.")) << LastBody();
}

TEST_F(FlashForm, ADumpIsRestoredAsItIsOnASecondYesWhereItTakesKeyContents)
{
    const auto choose = [&](const std::string& name, const std::string& content) {
        files.Write(At(name), content);
        Choose(name);
    };
    FlashDump dump{fresh, {}};
    dump.image[3000] ^= 0xFF;
    choose("cut.mem", FormatFlashDump(dump).substr(0, 1000));
    Run(Command::ToolsMenuFlashRestore);
    EXPECT_THAT(LastBody(), HasSubstr("cut.mem\r\nThe file is not a whole flash dump."));
    choose("till.mem", FormatFlashDump(dump));
    RunAndAnswer(Command::ToolsMenuFlashRestore, QDialogButtonBox::No);
    EXPECT_EQ(Flash(), fresh);
    choose("till.mem", FormatFlashDump(dump));
    RunAndAnswer(Command::ToolsMenuFlashRestore, QDialogButtonBox::Yes);
    EXPECT_EQ(Flash(), dump.image);
    EXPECT_EQ(prompt.shown.back().title, "Restore from Dump");

    std::fill(dump.image.begin() + 8000, dump.image.end(), std::uint8_t{0xFF});
    prompt.shown.clear();
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        choose("till.mem", FormatFlashDump(dump));
        prompt.answers = {answer};
        InDialog<ChangesDialog>(Command::ToolsMenuFlashRestore, [&](ChangesDialog& dialog) {
            EXPECT_THAT(Says(dialog, "Question"), StartsWith("This dump is erased where the device"));
            Decide(dialog, QDialogButtonBox::Yes);
        });
        EXPECT_EQ(Flash() == dump.image, answer == Answer::Yes);
    }
    EXPECT_EQ(prompt.shown.front().style.defaultAnswer, Answer::No);
}

TEST_F(FlashForm, ADumpIsNotPutInThePlaceOfASetupsBackupUnasked)
{
    files.Write(At("till.bak"), "[Kelvora]\r\n");
    const std::string old = FormatDump(0, FlashImage{});
    files.Write(At("till.mem"), old);
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        Choose("till.mem");
        prompt.answers = {Answer::Yes, answer};
        Trigger(Command::ToolsMenuFlashDumpUpload);
        EXPECT_TRUE(LastBody().ends_with("till.bak")) << LastBody();
        EXPECT_EQ(files.Read(At("till.mem")) == old, answer == Answer::No);
    }
    EXPECT_EQ(files.Read(At("till.bak")), old);
}

TEST_F(FlashForm, TheComparisonGoesFromOneDifferenceToTheNextAndFinds)
{
    ImageComparison images{"a", "b", fresh, fresh};
    images.after[0x1A0] ^= 1;
    images.after[0x1FFF] ^= 1;
    images.differences = DescribeDifferences(images.before, images.after, {});
    ComparisonDialog form(program.files, images);
    form.show();
    QApplication::setActiveWindow(&form);
    const auto& list = Find<QListWidget>(form, "Differences");
    const auto row = [&] { return Find<QTableView>(form, "Images").currentIndex().row(); };
    EXPECT_EQ(row(), 0x1A);
    QTest::keyClick(&form, Qt::Key_F3);
    EXPECT_EQ(row(), 0x1FF);
    QTest::keyClick(&form, Qt::Key_F3);
    EXPECT_EQ(list.currentRow(), 0);
    QTest::keyClick(&form, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(list.currentRow(), 1);

    auto& find = Find<QLineEdit>(form, "Find");
    for (const auto& [text, found] : {std::pair{"0234", ""}, {"No such text", "Neither image has this."}}) {
        find.setText(text);
        QTest::keyClick(&find, Qt::Key_Return);
        EXPECT_EQ(Says(form, "Found"), found);
        EXPECT_EQ(row(), 0x23);
    }
    // From the place that was found, not from the row of the list.
    QTest::keyClick(&form, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(row(), 0x1A);
    QTest::keyClick(&form, Qt::Key_F3);
    EXPECT_EQ(row(), 0x1FF);
}

}  // namespace kelvora
