#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QToolButton>
#include <QTreeWidget>

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
namespace {

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
    void RunAndAnswer(Command command, const char* button)
    {
        InDialog<ChangesDialog>([&] { Run(command); },
                                [&](ChangesDialog& dialog) { PressText(dialog, button); });
    }

    static void PressText(QWidget& form, const QString& text)
    {
        for (QPushButton* const button : form.findChildren<QPushButton*>())
            if (button->text() == text)
                return button->click();
        FAIL() << text.toStdString();
    }

    std::string LastBody() const { return prompt.shown.empty() ? std::string() : prompt.shown.back().body; }
    SetupSession& Session() { return window->ActiveSetup()->Session(); }
    const FlashImage& Flash() const { return line.Memory().flash; }

    FlashImage fresh{};
};

TEST_F(FlashForm, DownloadAsksWithTheLineFreeAndWritesOnlyOnYes)
{
    ClearFiscal();
    InDialog<ChangesDialog>(
        [&] { Run(Command::ToolsMenuFlashDownload); },
        [&](ChangesDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle().toStdString(), "Flash Download: COM1");
            EXPECT_EQ(dialog.findChild<QPlainTextEdit*>("Changes")->toPlainText().toStdString(),
                      "This will change in the device:\n"
                      "0006: Composite Keyboard, fiscal keyboard: yes -> no");
            EXPECT_TRUE(dialog.findChild<QLabel*>("Backup")->text().contains("/backups/20"));
            EXPECT_FALSE(port.IsOpen());
            EXPECT_TRUE(program.operation.IsBusy());
            EXPECT_FALSE(IsEnabled(Command::FileMenuNew));
            EXPECT_FALSE(QApplication::overrideCursor());
            window->close();
            EXPECT_FALSE(closed);
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
    EXPECT_EQ(Flash(), fresh);
    EXPECT_TRUE(prompt.shown.empty());

    RunAndAnswer(Command::ToolsMenuFlashDownload, "&Yes");
    FlashImage expected = fresh;
    expected[6] ^= 1;
    EXPECT_EQ(Flash(), expected);
    EXPECT_EQ(Session().deviceImage, expected);
    ASSERT_EQ(prompt.shown.size(), 1U);
    EXPECT_EQ(prompt.shown[0].title, "Flash Download");
    EXPECT_TRUE(LastBody().starts_with("The download is done.")) << LastBody();
}

TEST_F(FlashForm, TheQuestionTellsWhatTheDeviceCannotHold)
{
    SetupDocument& document = Session().document;
    McrOptions options = ReadMcrOptions(document).value();
    options.separators[1] = '#';
    document = WithOptions(document, options);
    // The keypad has a key there, whatever the setup says.
    document.Modules[FindModule(document.Modules, ModuleKind::ICCR).value()].KeyMap[0] = KeyType::NoKey;
    InDialog<ChangesDialog>(
        [&] { Run(Command::ToolsMenuFlashDownload); },
        [&](ChangesDialog& dialog) {
            const QString text = dialog.findChild<QPlainTextEdit*>("Changes")->toPlainText();
            EXPECT_TRUE(
                text.contains("MCR, separator after track 2: none -> # (23)\n\n"
                              "The device cannot hold this; it is left out:\nICCR, Key "))
                << text.toStdString();
            InDialog<ComparisonDialog>([&] { Press(dialog, "Compare"); },
                                       [&](ComparisonDialog& comparison) {
                                           EXPECT_EQ(comparison.findChild<QTableView*>("Images")
                                                         ->model()
                                                         ->headerData(ImageTable::After, Qt::Horizontal)
                                                         .toString()
                                                         .toStdString(),
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
            meanwhile();
        });
        loop.Pass(std::chrono::milliseconds(0));
    };
    ClearFiscal();
    InDialog<ChangesDialog>([&] { runWith([&] { EXPECT_TRUE(abort() && abort()->isVisible()); }); },
                            [&](ChangesDialog&) { EXPECT_TRUE(!abort() || !abort()->isVisible()); });
    EXPECT_TRUE(prompt.shown.empty());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    runWith([&] { Press(*abort(), "AbortCommand"); });
    EXPECT_NE(LastBody().find("\r\nThe work was stopped."), std::string::npos) << LastBody();
    EXPECT_EQ(Flash(), fresh);
}

TEST_F(FlashForm, VerifySaysWhereItDiffersAndShowsBothImages)
{
    Run(Command::ToolsMenuFlashVerify);
    EXPECT_EQ(LastBody(), "The device's flash memory holds this setup.");
    ClearFiscal();
    Run(Command::ToolsMenuFlashVerify);
    ASSERT_EQ(prompt.shown.size(), 2U);
    EXPECT_EQ(prompt.shown[1].title, "Flash Verify");
    EXPECT_TRUE(LastBody().starts_with(
        "The device does not hold this setup. The first difference is at address 0006 (hex)\r\n"));
    EXPECT_NE(LastBody().find("fiscal keyboard: no -> yes\r\n"), std::string::npos) << LastBody();
    EXPECT_EQ(prompt.shown[1].style.defaultAnswer, Answer::No);

    prompt.answers = {Answer::Yes};
    Run(Command::ToolsMenuFlashVerify);
    const auto* const shown = Opened<ComparisonDialog>();
    ASSERT_TRUE(shown && shown->isVisible() && !shown->isModal());
    EXPECT_EQ(shown->findChild<QListWidget*>("Differences")->count(), 1);
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
    window->findChild<QToolButton*>("DUMP")->click();
    FlashImage cleared = fresh;
    cleared[6] ^= 1;
    dump = ReadDump(files.Read(file));
    EXPECT_EQ(dump.image, cleared);
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
    RunAndAnswer(Command::ToolsMenuFlashDownload, "&Yes");
    files.Write(At("backups/broken.mem"), "0000:00 12\r\n");
    const auto open = [&] { Run(Command::ToolsMenuFlashBackups); };

    InDialog<BackupsDialog>(open, [&](BackupsDialog& dialog) {
        const auto* const list = dialog.findChild<QTreeWidget*>("Backups");
        ASSERT_EQ(list->topLevelItemCount(), 2);
        EXPECT_EQ(list->topLevelItem(0)->text(2), "whole");
        EXPECT_EQ(list->topLevelItem(0)->text(4), "Composite Keyboard, Slave Keyboard, MCR, ICCR");
        EXPECT_EQ(list->topLevelItem(1)->text(6), "broken.mem");
        EXPECT_TRUE(list->topLevelItem(1)->text(2).contains("Line 1: "));
        InDialog<ComparisonDialog>([&] { Press(dialog, "Compare"); },
                                   [&](ComparisonDialog& comparison) {
                                       EXPECT_EQ(comparison.findChild<QListWidget*>("Differences")->count(),
                                                 1);
                                   });
        QTest::keyClick(dialog.findChild<QTreeWidget*>("Backups"), Qt::Key_Down);
        EXPECT_FALSE(dialog.findChild<QPushButton*>("Restore")->isEnabled());
        EXPECT_FALSE(dialog.findChild<QPushButton*>("Compare")->isEnabled());
    });

    // The list closes first; the question comes when the line has been read.
    InDialog<BackupsDialog>([&] { Trigger(Command::ToolsMenuFlashBackups); },
                            [&](BackupsDialog& dialog) { Press(dialog, "Restore"); });
    InDialog<ChangesDialog>(
        [&] { loop.Pass(std::chrono::milliseconds(0)); },
        [&](ChangesDialog& dialog) {
            // The question says which backup is meant.
            EXPECT_TRUE(dialog.findChild<QLabel*>("Question")->text().contains("\nCOM1, 20"));
            PressText(dialog, "&Yes");
        });
    EXPECT_EQ(Flash(), fresh);
    EXPECT_TRUE(LastBody().starts_with("The dump is restored.")) << LastBody();
}

TEST_F(FlashForm, ADumpIsRestoredAsItIsAndADamagedOneRefused)
{
    FlashImage dumped = fresh;
    dumped[3000] ^= 0xFF;
    const std::string text = FormatDump(0, dumped);
    const auto choose = [&](const std::string& name, const std::string& content) {
        files.Write(At(name), content);
        Choose(name);
    };
    choose("cut.mem", text.substr(0, 1000));
    Run(Command::ToolsMenuFlashRestore);
    EXPECT_NE(LastBody().find("cut.mem\r\nThe file is not a whole flash dump."), std::string::npos);
    choose("till.mem", text);
    RunAndAnswer(Command::ToolsMenuFlashRestore, "&No");
    EXPECT_EQ(Flash(), fresh);
    choose("till.mem", text);
    RunAndAnswer(Command::ToolsMenuFlashRestore, "&Yes");
    EXPECT_EQ(Flash(), dumped);
    EXPECT_EQ(prompt.shown.back().title, "Restore from Dump");
}

TEST_F(FlashForm, WhatTakesKeyContentsNeedsASecondYes)
{
    FlashDump dump{fresh, {}};
    std::fill(dump.image.begin() + 8000, dump.image.end(), std::uint8_t{0xFF});
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        files.Write(At("till.mem"), FormatFlashDump(dump));
        Choose("till.mem");
        prompt.answers = {answer};
        InDialog<ChangesDialog>(
            [&] { Run(Command::ToolsMenuFlashRestore); },
            [&](ChangesDialog& dialog) {
                EXPECT_TRUE(dialog.findChild<QLabel*>("Question")
                                ->text()
                                .startsWith("This dump is erased where the device holds key contents."));
                PressText(dialog, "&Yes");
            });
        EXPECT_EQ(Flash(), answer == Answer::Yes ? dump.image : fresh);
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
    auto* const list = form.findChild<QListWidget*>("Differences");
    const auto row = [&] { return form.findChild<QTableView*>("Images")->currentIndex().row(); };
    EXPECT_EQ(row(), 0x1A);
    QTest::keyClick(&form, Qt::Key_F3);
    EXPECT_EQ(row(), 0x1FF);
    QTest::keyClick(&form, Qt::Key_F3);
    EXPECT_EQ(list->currentRow(), 0);
    QTest::keyClick(&form, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(list->currentRow(), 1);

    auto* const find = form.findChild<QLineEdit*>("Find");
    for (const auto& [text, found] : {std::pair{"0234", ""}, {"No such text", "Neither image has this."}}) {
        find->setText(text);
        QTest::keyClick(find, Qt::Key_Return);
        EXPECT_EQ(form.findChild<QLabel*>("Found")->text(), found);
        EXPECT_EQ(row(), 0x23);
    }
    // From the place that was found, not from the row of the list.
    QTest::keyClick(&form, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(row(), 0x1A);
    QTest::keyClick(&form, Qt::Key_F3);
    EXPECT_EQ(row(), 0x1FF);
}

}  // namespace
}  // namespace kelvora
