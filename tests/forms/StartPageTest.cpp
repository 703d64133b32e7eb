#include "fakes/FakeFiles.h"
#include "forms/MainWindowFixture.h"
#include "picture/forms/CardDelegate.h"

namespace kelvora {

class StartPageForm : public MainWindowFixture {
protected:
    StartPageForm()
    {
        files.Write(path, "[Kelvora]\r\nVersion = 2.0\r\n[KM096]\r\n[MCR]\r\n");
        files.Write(broken, "[KM064]\r\n[KM096]\r\n");
        QSettings memory(folder.path() + QStringLiteral("/Kelvora.ini"), QSettings::IniFormat);
        memory.setValue("RecentFiles",
                        QStringList{PathToQString(broken), folder.path() + "/gone.dat", PathToQString(path)});
        memory.sync();
        Start();
        EXPECT_TRUE(AreRead());
    }

    StartPage& Page() { return Find<StartPage>(*window); }
    SetupCards& Cards() { return Find<SetupCards>(Page()); }
    QString Told(int row) { return Cards().model()->index(row, 0).data(Qt::AccessibleTextRole).toString(); }
    bool AreRead()
    {
        return QTest::qWaitFor([this] { return !Cards().IsReading(); }, LongestWaitMs);
    }
    void Key(Qt::Key key) { QTest::keyClick(&Cards(), key); }

    std::string broken = At("broken.dat");
};

TEST_F(StartPageForm, TellsOfEachFileOpensItAndTakesItFromTheList)
{
    ASSERT_EQ(Cards().model()->rowCount(), 3);
    EXPECT_TRUE(Told(0).startsWith("broken.dat, The file cannot be read.")) << Told(0).toStdString();
    EXPECT_TRUE(Told(1).startsWith("gone.dat, The file is no longer there.")) << Told(1).toStdString();
    EXPECT_TRUE(Told(2).startsWith("Till.dat, KM096, MCR, Saved 2")) << Told(2).toStdString();

    EXPECT_TRUE(Cards().hasFocus());
    // Both halves are on the sign, but of two cards.
    const QPoint sign = CardDelegate::TakeSign(Cards().visualRect(Cards().model()->index(0, 0))).center();
    QTest::mouseClick(Cards().viewport(), Qt::LeftButton, {}, sign);
    QTest::mouseDClick(Cards().viewport(), Qt::LeftButton, {}, sign);
    EXPECT_EQ(Cards().model()->rowCount(), 2);
    Key(Qt::Key_Return);
    EXPECT_THAT(prompt.TakeBodies(), ElementsAre(StartsWith(Message::NotFound.fallback)));
    EXPECT_EQ(Cards().model()->rowCount(), 1) << "what is gone is told of once";

    EXPECT_TRUE(AreRead());
    Key(Qt::Key_Space);
    ASSERT_NE(window->ActiveSetup(), nullptr);
    EXPECT_FALSE(Page().isVisible());
    Trigger(Command::FileMenuClose);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    EXPECT_TRUE(Page().isVisible() && Cards().hasFocus());
    Key(Qt::Key_Delete);
    EXPECT_TRUE(Find<QLabel>(Page(), "NoRecent").isVisible());
    EXPECT_TRUE(Page().isAncestorOf(QApplication::focusWidget())) << "the keys still go to the page";
    EXPECT_TRUE(files.Exists(path)) << "the files stay";
}

TEST(SetupCardsForm, AFileThatDoesNotComeHoldsUpNeitherCardsNorWindow)
{
    FakeFiles files;
    files.content = {{"/net/a", "[KM096]\r\n"}, {"/here/b", "[KM096]\r\n"}};
    const std::vector<CardFile> list{{"/net/a", "a", {}}, {"/here/b", "b", {}}};
    const MessageCatalogue catalogue;
    std::promise<void> drive;
    std::promise<void> deadDrive;
    files.comesLater["/net/a"] = drive.get_future().share();
    auto cards = std::make_unique<SetupCards>(SetupCards::Use::Open, files, catalogue);
    int opened = 0;
    QObject::connect(cards.get(), &SetupCards::opened, [&] { ++opened; });
    const auto waitFor = [&](int row, const char* told) {
        return QTest::qWaitFor(
            [&] { return cards->model()->index(row, 0).data(Qt::AccessibleTextRole) == QLatin1String(told); },
            LongestWaitMs);
    };
    cards->ShowFiles(list);
    cards->show();
    QApplication::setActiveWindow(cards.get());
    EXPECT_TRUE(waitFor(1, "b, KM096") && waitFor(0, "a, The file is being read..."));
    QTest::keyClick(cards.get(), Qt::Key_Return);
    EXPECT_EQ(opened, 0);
    files.comesLater["/net/a"] = deadDrive.get_future().share();
    drive.set_value();
    EXPECT_TRUE(waitFor(0, "a, KM096"));
    EXPECT_EQ(opened, 1);
    cards->ShowFiles(list);
    EXPECT_TRUE(waitFor(1, "b, KM096"));
    cards.reset();
    deadDrive.set_value();
}

TEST(SetupCardsForm, TheProgramEndsThoughAFileIsStillBeingRead)
{
    FakeFiles files;
    std::promise<void> drive;
    files.comesLater["/net/a"] = drive.get_future().share();
    files.content["/net/a"] = {};
    const auto end = [&] {
        const MessageCatalogue catalogue;
        auto cards = std::make_unique<SetupCards>(SetupCards::Use::Open, files, catalogue);
        cards->ShowFiles({{"/net/a", "a", {}}});
        cards->show();
        const bool isOut = QTest::qWaitFor(
            [&] { return cards->model()->index(0, 0).data(CardProblem).isValid(); }, LongestWaitMs);
        cards.reset();
        std::exit(isOut ? 0 : 1);
    };
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(end(), testing::ExitedWithCode(0), "");
}

TEST_F(StartPageForm, ItsButtonsAreTheMenusCommands)
{
    std::vector<bool> wanted;
    QObject::connect(window.get(), &MDIForm1::practiceChosen,
                     [&](bool isWanted) { wanted.push_back(isWanted); });
    Press(Page(), "StartCommunicationsMenuPractice");
    EXPECT_EQ(wanted, std::vector{true});
    EXPECT_FALSE(IsUsable(Page(), "StartFileMenuScan")) << "there is no port";
    auto& create = Find<QAbstractButton>(Page(), "StartFileMenuNew");
    create.setFocus();
    QTest::keyClick(&create, Qt::Key_Return);
    EXPECT_NE(window->ActiveSetup(), nullptr);
}

}  // namespace kelvora
