// The windows of a series and of the journal.

#include "fakes/FakeSeriesRunner.h"
#include "fakes/MemoryJournal.h"
#include "flash/Backups.h"
#include "forms/MainWindowFixture.h"
#include "journal/forms/JournalModel.h"
#include "journal/forms/JournalWindow.h"
#include "series/forms/LaneView.h"
#include "series/forms/SeriesTable.h"
#include "series/forms/SeriesWindow.h"
#include "series/forms/VerdictSign.h"

namespace kelvora {

using Kind = SeriesEvent::Kind;
using Result = JournalEntry::Result;

class SeriesForm : public MainWindowFixture {
protected:
    SeriesForm()
    {
        form = new SeriesWindow(program.files, lines, program.main, loop, [this] {
            auto runner = std::make_unique<FakeSeriesRunner>();
            runners.push_back(runner.get());
            return runner;
        });
        QObject::connect(form, &SeriesWindow::judged, [this](bool passed) { sounds += passed ? '+' : '-'; });
        form->Offer(QStringLiteral("/home/shop/till.dat"), 1);
        form->show();
    }
    ~SeriesForm() override { delete form; }

    QAbstractButton& Button(const char* name) { return Find<QAbstractButton>(*form, name); }
    QLineEdit& Path(const char* name) { return Find<QLineEdit>(*form, name); }
    QWidget& Lane(int number) { return Find<QWidget>(*form, number == 1 ? "Lane1" : "Lane2"); }
    QString Words(int number) { return Find<VerdictSign>(Lane(number), "VerdictSign").accessibleName(); }

    void StartTwo()
    {
        Button("Line2").setChecked(true);
        prompt.answers = {Answer::Yes};
        Button("Start").click();
        ASSERT_EQ(runners.size(), 2U);
    }

    bench::SimulatedLine secondLine{clock, bench::FreshLine(BenchLine::AllModules())};
    bench::SimulatedPort secondPort{secondLine, "/dev/second"};
    Lines lines{{&port, &secondPort}, loop};
    QPointer<SeriesWindow> form;
    std::vector<FakeSeriesRunner*> runners;
    std::string sounds;
};

TEST_F(SeriesForm, StartsAProgramALineAfterOneQuestion)
{
    Path("SetupPath").clear();
    EXPECT_FALSE(Button("Start").isEnabled());
    Path("SetupPath").setText(QStringLiteral("/home/shop/till.dat"));
    EXPECT_FALSE(Button("Line3").isEnabled()) << "there is no such port";
    Button("Start").click();
    EXPECT_TRUE(runners.empty()) << "No is the default";

    StartTwo();
    EXPECT_THAT(prompt.shown.back().body, HasSubstr("COM1, COM2: /home/shop/till.dat"));
    EXPECT_EQ(runners[1]->arguments,
              QStringList({"series", "--json", "--yes", "--port", "2", "--line", "2=/dev/second",
                           "--settings", ToQString(program.main.PortSettings), "/home/shop/till.dat"}));
    EXPECT_FALSE(Button("Start").isEnabled());

    runners[0]->onEnd({});
    runners[1]->onEnd("kelvora-cli: no such thing");
    EXPECT_EQ(Words(2), "Ended");
    Path("FolderPath").setText(QStringLiteral("/home/shop"));
    Button("FolderChoice").click();
    prompt.answers = {Answer::Yes};
    Button("Start").click();
    EXPECT_EQ(runners.back()->arguments.mid(9), QStringList({"--by-name", "/home/shop"}));
}

TEST_F(SeriesForm, ShowsWhatEachLineSays)
{
    StartTwo();
    runners[0]->onLine("not an event");
    EXPECT_EQ(Words(1), "Waiting for a till");
    runners[0]->Say({.kind = Kind::Found, .line = 1, .terminal = "TILL07"});
    runners[0]->Say({.kind = Kind::Progress, .line = 1, .done = 10, .total = 40});
    runners[1]->Say({.kind = Kind::NoPort, .line = 2, .message = "There is no such device."});
    EXPECT_EQ(Words(1), "Working");
    EXPECT_EQ(Words(2), "Waiting for the port");
    EXPECT_EQ(Says(Lane(2), "Hint"), "There is no such device.");

    const auto check = [&](Result result, const char* words, bool canRetry) {
        runners[0]->Say({.kind = Kind::Found, .line = 1, .terminal = "TILL07"});
        runners[0]->Say(FakeSeriesRunner::Verdict(1, "TILL07", result));
        EXPECT_EQ(Words(1), words);
        EXPECT_EQ(Find<QWidget>(Lane(1), "Retry").isVisibleTo(form), canRetry) << words;
    };
    check(Result::Done, "Done", false);
    check(Result::Same, "Held it already", false);
    check(Result::Failed, "Failed", true);
    check(Result::Stopped, "Stopped", true);
    EXPECT_EQ(sounds, "++--");
    EXPECT_EQ(Find<QTableWidget>(*form, "Tills").rowCount(), 4);
    EXPECT_EQ(Find<QTableWidget>(*form, "Tills").item(0, 4)->text(), "Stopped");
    // Gone, there is nothing to try again; that it failed stays to be read until the next one comes.
    runners[0]->Say({.kind = Kind::Gone, .line = 1});
    runners[0]->Say({.kind = Kind::Waiting, .line = 1});
    EXPECT_EQ(Words(1), "Stopped");
    EXPECT_FALSE(Find<QWidget>(Lane(1), "Retry").isVisibleTo(form));
}

TEST_F(SeriesForm, RetryAndStopReachTheProgramOfTheLine)
{
    StartTwo();
    runners[0]->Say({.kind = Kind::Found, .line = 1, .terminal = "TILL07"});
    runners[0]->Say(FakeSeriesRunner::Verdict(1, "TILL07", Result::Failed));
    FakeSeriesRunner* const first = runners[0];
    const QStringList agreed = first->arguments;
    Press(Lane(1), "Retry");
    EXPECT_EQ(first->stopsAfter, 1);
    EXPECT_EQ(runners[1]->stopsAfter, 0);
    // What is chosen meanwhile is not what was agreed to.
    Path("SetupPath").setText("/other.dat");
    first->onEnd({});
    loop.Pass(std::chrono::milliseconds(1));
    ASSERT_EQ(runners.size(), 3U);
    EXPECT_EQ(runners[2]->arguments, agreed);

    Button("StopAfter").click();
    EXPECT_EQ(runners[2]->stopsAfter + runners[1]->stopsAfter, 2);
    EXPECT_FALSE(Button("StopAfter").isEnabled());
    Button("StopNow").click();
    EXPECT_EQ(runners[2]->stopsNow + runners[1]->stopsNow, 2);

    form->close();
    EXPECT_TRUE(form && form->isVisible()) << "No is the default";
    prompt.answers = {Answer::Yes};
    form->close();
    EXPECT_TRUE(form && form->isVisible()) << "until the tills are left in order";
    runners[1]->onEnd({});
    runners[2]->onEnd({});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(form);
}

TEST_F(SeriesForm, SavesTheReport)
{
    StartTwo();
    runners[0]->Say(FakeSeriesRunner::Verdict(1, "TILL \"7\"", Result::Done));
    runners[1]->Say(FakeSeriesRunner::Verdict(2, "TILL08", Result::Failed));
    Choose("report", 1);
    Choose("report", 2);
    Button("SaveReport").click();
    Button("SaveReport").click();
    EXPECT_EQ(
        files.Read(At("report.csv")),
        "time,line,terminal,modules,setup,result,changes,message,backup,seconds\r\n"
        "2026-03-09 07:05:00,COM1,\"TILL \"\"7\"\"\",\"KM096, KM064, MCR, ICCR\",/home/shop/till.dat,done,"
        "\"MCR, auto-read: yes -> no; Slave Keyboard, Key 74: single key -> unused\",,"
        "/home/shop/.local/share/Kelvora/backups/2026-03-09 07-05-00 COM1.mem,31.3\r\n"
        "2026-03-09 07:05:00,COM2,TILL08,\"KM096, KM064, MCR, ICCR\",/home/shop/till.dat,failed,,"
        "The modules on the line are not those of the setup.,"
        "/home/shop/.local/share/Kelvora/backups/2026-03-09 07-05-00 COM1.mem,31.3\r\n");
    EXPECT_THAT(files.Read(At("report.json")), HasSubstr("\"terminal\": \"TILL08\""));
}

struct HasJournal {
    MemoryJournal kept;
};

class JournalForm : protected HasJournal, public MainWindowFixture {
protected:
    JournalForm() : MainWindowFixture(true, &kept.journal) { Start(); }

    JournalWindow& Show()
    {
        Trigger(Command::ToolsMenuJournal);
        return *Opened<JournalWindow>();
    }
    static QTableView& Table(JournalWindow& form) { return Find<QTableView>(form); }
    static QString Cell(JournalWindow& form, int row, int column)
    {
        return Table(form).model()->index(row, column).data().toString();
    }
};

TEST_F(JournalForm, EveryOperationOfTheWindowsIsThere)
{
    Run(Command::FileMenuScan);
    Run(Command::ToolsMenuFlashVerify);
    kept.failure = "No space left on device";
    Run(Command::ToolsMenuFlashVerify);
    EXPECT_THAT(prompt.shown[prompt.shown.size() - 2].body, HasSubstr("No space left on device"));
    kept.failure.clear();

    JournalWindow& form = Show();
    ASSERT_EQ(Table(form).model()->rowCount(), 2);
    EXPECT_EQ(Cell(form, 0, JournalModel::Operation), "verify");
    EXPECT_EQ(Cell(form, 1, JournalModel::Operation), "scan");
    EXPECT_EQ(Cell(form, 1, JournalModel::Terminal), "BENCH TERMINAL");
    EXPECT_EQ(Cell(form, 1, JournalModel::Modules), "KM096, KM064, MCR, ICCR");
    EXPECT_EQ(kept.Entries()[0].crcAfter, kept.Entries()[1].crcBefore);
}

TEST_F(JournalForm, SortsFiltersAndSearches)
{
    JournalEntry entry;
    entry.operation = JournalOperation::Download;
    for (int i = 0; i < 30; ++i) {
        entry.time = "2026-03-09T07:05:" + std::to_string(10 + i) + "+01:00";
        entry.terminal = "TILL" + std::to_string(i);
        entry.result = i % 10 == 3 ? Result::Failed : Result::Done;
        entry.seconds = 100 - i;
        kept.text += JournalLine(entry);
    }
    kept.text += "torn";
    JournalWindow& form = Show();
    EXPECT_EQ(Cell(form, 0, JournalModel::Terminal), "TILL29") << "the newest first";
    auto& search = Find<QLineEdit>(form);
    Table(form).sortByColumn(JournalModel::Seconds, Qt::AscendingOrder);
    Table(form).setColumnWidth(JournalModel::Time, 321);
    search.setText(QStringLiteral("till2"));
    EXPECT_EQ(Table(form).columnWidth(JournalModel::Time), 321);
    EXPECT_EQ(Cell(form, 0, JournalModel::Terminal), "TILL29") << "sorted as before";
    EXPECT_EQ(Table(form).model()->rowCount(), 11);
    Press(form, "FailedOnly");
    EXPECT_EQ(Table(form).model()->rowCount(), 1);
    EXPECT_EQ(Cell(form, 0, JournalModel::Terminal), "TILL23");
    search.clear();
    Table(form).sortByColumn(JournalModel::Seconds, Qt::DescendingOrder);
    EXPECT_EQ(Cell(form, 0, JournalModel::Terminal), "TILL3");
}

TEST_F(JournalForm, ABackupIsOpenedComparedAndRestored)
{
    Run(Command::FileMenuScan);
    Backups backups(files, Folder() + "/backups");
    FlashImage changed = *Session().DeviceImage();
    changed[6] ^= 1;
    JournalEntry entry{.time = "2026-03-09T07:05:00+01:00",
                       .operation = JournalOperation::Download,
                       .line = 1,
                       .result = Result::Done,
                       .backup = At("none.mem")};
    kept.text += JournalLine(entry);
    entry.backup = backups.Keep({1, Session().document.DeviceMap, "BENCH TERMINAL", changed});
    kept.text += JournalLine(entry);

    JournalWindow& form = Show();
    EXPECT_FALSE(IsUsable(form, "OpenBackup"));
    Table(form).selectRow(1);
    Press(form, "OpenBackup");
    EXPECT_THAT(prompt.shown.back().body, HasSubstr("No such file"));
    Table(form).selectRow(0);
    EXPECT_THAT(Says(form, "Detail"), HasSubstr("COM1.mem"));
    const std::size_t windows = window->AllSetups().size();
    Press(form, "Compare");
    EXPECT_EQ(window->AllSetups().size(), windows);
    Press(form, "OpenBackup");
    ASSERT_EQ(window->AllSetups().size(), windows + 1);
    EXPECT_EQ(Modules().size(), 6U);
    EXPECT_TRUE(window->ActiveSetup()->IsChanged()) << "it is in no file yet";

    Table(form).selectRow(0);
    InDialog<QDialog>(
        [&] {
            Press(form, "Restore");
            loop.Pass(std::chrono::milliseconds(0));
        },
        [](QDialog& question) { question.accept(); });
    EXPECT_EQ(line.Memory().flash[6], changed[6]);
    EXPECT_EQ(kept.Last().operation, JournalOperation::Restore);
    EXPECT_EQ(kept.Last().result, Result::Done);
    EXPECT_TRUE(kept.Last().sha256.starts_with("hash of "));
}

}  // namespace kelvora
