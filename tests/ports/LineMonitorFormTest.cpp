#include "comms/forms/LineMonitorWindow.h"
#include "ports/PortFormsFixture.h"

namespace kelvora {

using namespace std::chrono_literals;

class MonitorForm : public PortFormsFixture {
protected:
    MonitorForm() { Show(*window); }
    ~MonitorForm() override { delete window; }

    void Add(int count = 1, LineTraffic::Damage damage = LineTraffic::Damage::None)
    {
        for (int i = 0; i < count; ++i)
            AddLater("\x01$9902\x03", damage);
        loop.Pass(60ms);
        QCoreApplication::processEvents();
    }

    void AddLater(std::string_view bytes, LineTraffic::Damage damage = LineTraffic::Damage::None)
    {
        monitor.Add(2, {LineTraffic::Direction::Received, damage, bytes}, "reply $9902");
    }

    QTableView& Table() { return Find<QTableView>(*window, "Entries"); }
    int Rows() { return Table().model()->rowCount(); }
    QVariant Cell(int row, int column, int role = Qt::DisplayRole)
    {
        return Table().model()->index(row, column).data(role);
    }
    bool IsAtEnd()
    {
        const QScrollBar& bar = *Table().verticalScrollBar();
        return bar.value() == bar.maximum();
    }

    LineMonitor monitor;
    RunningOperation running;
    QPointer<LineMonitorWindow> window = new LineMonitorWindow(userFiles, running, loop, monitor);
};

TEST_F(MonitorForm, ShowsMeaningBytesAndDamage)
{
    Add();
    Add(1, LineTraffic::Damage::CutShort);
    ASSERT_EQ(Rows(), 2);
    const std::vector<std::string> second{
        "COM2", "received", "cut short", "reply $9902", "01 24 39 39 30 32 03", ".$9902."};
    for (std::size_t column = 0; column < second.size(); ++column)
        EXPECT_EQ(Cell(1, static_cast<int>(column) + 1).toString().toStdString(), second[column]);
    EXPECT_FALSE(Cell(0, LineMonitorModel::Damage, Qt::ForegroundRole).isValid());
    EXPECT_TRUE(Cell(1, LineMonitorModel::Damage, Qt::ForegroundRole).isValid());
    AddLater("18 characters long");
    loop.Pass(60ms);
    Table().selectRow(2);
    EXPECT_EQ(std::ranges::count(Says(*window, "Detail"), '\n'), 2);
}

TEST_F(MonitorForm, GathersChangesAndFollowsTheEndUnlessScrolledUp)
{
    AddLater("x");
    EXPECT_EQ(Rows(), 0) << "drawn once for many";
    Add(99);
    EXPECT_EQ(Rows(), 100);
    EXPECT_TRUE(IsAtEnd());
    Table().verticalScrollBar()->setValue(10);
    Add(50);
    EXPECT_EQ(Table().verticalScrollBar()->value(), 10);
    Table().scrollToBottom();
    Add(10'000);
    EXPECT_TRUE(IsAtEnd());
    EXPECT_EQ(Rows(), 10'000) << "what the monitor has forgotten is gone here too";
}

TEST_F(MonitorForm, PauseHoldsWhatIsShownAndClearEmptiesIt)
{
    Add(3);
    Press(*window, "Pause");
    Add(10'000);
    EXPECT_EQ(Rows(), 3);
    Press(*window, "Pause");
    EXPECT_EQ(Rows(), 10'000);
    Press(*window, "Pause");
    Press(*window, "Clear");
    EXPECT_EQ(Rows(), 0);
    EXPECT_TRUE(monitor.Entries().empty());
    EXPECT_FALSE(IsUsable(*window, "SaveAs"));
}

TEST_F(MonitorForm, SavesWhatIsShownAndAsksBeforeOverwriting)
{
    Add(2);
    files.content["/tmp/old.log"] = "old";
    dialogs.choices = {{"/tmp/line", "/tmp", 1}, {"/tmp/old.log", "/tmp", 2}};
    Press(*window, "SaveAs");
    EXPECT_EQ(std::ranges::count(files.content.at("/tmp/line.txt"), '\n'), 3);
    Press(*window, "SaveAs");
    EXPECT_EQ(files.content.at("/tmp/old.log"), "old") << "No is the default";
    EXPECT_EQ(prompt.shown.size(), 1U);
}

TEST_F(MonitorForm, ClosesUnderTheMonitorsHands)
{
    AddLater("x");
    QTest::keyClick(window, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(window, nullptr);
    AddLater("x");
    loop.Pass(60ms);
    EXPECT_EQ(monitor.Entries().size(), 2U);
}

}  // namespace kelvora
