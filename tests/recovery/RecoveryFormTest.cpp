#include "recovery/forms/RecoveryDialog.h"

#include "fakes/MemoryRecovery.h"
#include "forms/MainWindowFixture.h"
#include "keymap/forms/frmKeyb.h"
#include "setup/SetupWriter.h"

namespace kelvora {

using namespace std::chrono_literals;

const std::string Empty = "[Kelvora]\r\nVersion = 2.0\r\n";
const std::string Badge = Empty + "[MCR]\r\nTracks = 1,2  \r\nAutoread = OFF\r\n";
const std::string AutoBadge = Empty + "[MCR]\r\nTracks = 1,2  \r\nAutoread = ON \r\n";

class RecoveryForm : public MainWindowFixture {
protected:
    RecoveryForm()
    {
        program.world.recovery = &store;
        Start();
    }

    void NewWithMaster()
    {
        Trigger(Command::FileMenuNew);
        Trigger(Command::LayoutMenuAddKBMASTER);
    }
    /// What the copy of that window holds; empty without one.
    std::string Kept(int number)
    {
        const auto copy =
            store.copies.contains(number) ? ReadRecoveryCopy(store.copies[number]) : std::nullopt;
        return copy ? copy->setup : std::string();
    }
    std::string KeptAfterTwoSeconds(int number = 1)
    {
        loop.Pass(2s);
        return Kept(number);
    }
    std::string Present() { return WriteSetup(Modules()); }
    void Leave(const std::string& id, const std::string& file)
    {
        store.left[id] = RecoveryText({"2026-03-09 07:05:00", "till", file, Badge, AutoBadge});
    }
    void Offer(const std::function<void(RecoveryDialog&)>& act)
    {
        InDialog<RecoveryDialog>([this] { window->Unsaved().Offer(*window); }, act);
    }
    static QTreeWidget& List(RecoveryDialog& dialog) { return Find<QTreeWidget>(dialog, "Copies"); }

    MemoryRecovery store;
};

TEST_F(RecoveryForm, ACopyFollowsTheChangesWithinTwoSecondsAndGoesWithThem)
{
    NewWithMaster();
    EXPECT_TRUE(store.copies.empty());
    EXPECT_EQ(KeptAfterTwoSeconds(), Present());
    loop.Pass(60s);
    EXPECT_EQ(store.writes, 1);

    // Undone, done again, saved, changed, and closed without a save.
    Trigger(Command::EditMenuUndo);
    EXPECT_EQ(KeptAfterTwoSeconds(), "");
    Trigger(Command::EditMenuRedo);
    EXPECT_EQ(KeptAfterTwoSeconds(), Present());
    Choose("Till.dat");
    Trigger(Command::FileMenuSave);
    EXPECT_EQ(KeptAfterTwoSeconds(), "");
    Trigger(Command::LayoutMenuAddMCR);
    EXPECT_EQ(KeptAfterTwoSeconds(), Present());
    const auto copy = ReadRecoveryCopy(store.copies.at(1));
    EXPECT_EQ(copy->path, At("till.dat"));
    EXPECT_EQ(copy->saved + "\r\n", files.Read(copy->path));
    NewWithMaster();
    loop.Pass(2s);
    EXPECT_EQ(store.copies.size(), 2U);
    prompt.answers = {Answer::No};
    Trigger(Command::FileMenuClose);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(store.copies.size(), 1U);
    EXPECT_EQ(Kept(1), Present());
}

TEST_F(RecoveryForm, WhatAnOpenKeyFormHoldsIsKeptToo)
{
    NewWithMaster();
    const std::string before = KeptAfterTwoSeconds();
    InDialog<frmKeyb>(StripButton::Master, [&](frmKeyb& form) {
        Press(form, "Keys51");
        Press(form, "KeyTypeOption2");
        EXPECT_NE(KeptAfterTwoSeconds(), before);
        // Given up.
        prompt.answers = {Answer::Yes};
        form.reject();
        QTest::qWait(0);
    });
    EXPECT_EQ(KeptAfterTwoSeconds(), before);
}

TEST_F(RecoveryForm, CopiesOutliveASignalAndNoAnsweredEnd)
{
    NewWithMaster();
    window->Unsaved().Leave();
    EXPECT_EQ(Kept(1), Present());
    window.reset();
    EXPECT_FALSE(store.copies.empty());
    store.copies.clear();

    Start();
    NewWithMaster();
    loop.Pass(2s);
    ASSERT_EQ(store.copies.size(), 1U);
    prompt.answers = {Answer::No};
    window->close();
    // At once: in the two seconds that the end takes, a signal may come.
    EXPECT_TRUE(store.copies.empty());
    window->Unsaved().Leave();
    loop.Pass(3s);
    EXPECT_TRUE(closed);
    EXPECT_TRUE(store.copies.empty());
}

TEST_F(RecoveryForm, ADiskThatIsFullIsToldOnceAndWorkGoesOn)
{
    std::vector<QString> told;
    QObject::connect(&window->Unsaved(), &RecoveryForms::failed,
                     [&told](const QString& text) { told.push_back(text); });
    store.isFull = true;
    NewWithMaster();
    loop.Pass(2s);
    Trigger(Command::LayoutMenuAddMCR);
    loop.Pass(2s);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_TRUE(told[0].endsWith("/state/1.copy: No space left on device")) << qPrintable(told[0]);
    EXPECT_TRUE(prompt.shown.empty());
    store.isFull = false;
    EXPECT_EQ(KeptAfterTwoSeconds(), Present());
    // The end comes while a module is being placed.
    Trigger(Command::LayoutMenuAddKB64);
    EXPECT_TRUE(window->ActiveSetup()->IsPlacing());
    window->Unsaved().Leave();
    window.reset();
    EXPECT_NE(Kept(1), "");
}

TEST_F(RecoveryForm, TakenItIsAChangeOfItsFile)
{
    files.Write(path, Badge + "\r\n");
    Leave("a", path);
    Offer([](RecoveryDialog& dialog) {
        EXPECT_EQ(List(dialog).topLevelItem(0)->text(1), "2026-03-09 07:05:00");
        EXPECT_EQ(Find<QListWidget>(dialog, "Differences").count(), 1);
        QTest::keyClick(&List(dialog), Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(store.releases, 1);
    EXPECT_TRUE(store.left.empty());
    EXPECT_EQ(Kept(1), AutoBadge);
    frmConfig* const setup = window->ActiveSetup();
    ASSERT_NE(setup, nullptr);
    EXPECT_TRUE(setup->isWindowModified());
    EXPECT_EQ(setup->windowTitle(), "till[*]");
    EXPECT_EQ(Present(), AutoBadge);
    Trigger(Command::EditMenuUndo);
    EXPECT_EQ(Present(), Badge);
    EXPECT_FALSE(setup->isWindowModified());
    Trigger(Command::EditMenuRedo);
    Trigger(Command::FileMenuSave);
    EXPECT_EQ(files.Read(path), AutoBadge + "\r\n");
    EXPECT_EQ(files.Read(Folder() + "/Till.bak"), Badge + "\r\n");
    loop.Pass(2s);
    EXPECT_TRUE(store.copies.empty());

    // Nothing is left: nothing is asked.
    window->Unsaved().Offer(*window);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(RecoveryForm, EachIsTakenThrownAwayOrLeftAndADamagedOneCannotBeTaken)
{
    // Its file is gone.
    Leave("a", path);
    Leave("b", path);
    Leave("c", "");
    store.left["0 damaged"] = "rubbish";
    Offer([this](RecoveryDialog& dialog) {
        QApplication::setActiveWindow(&dialog);
        EXPECT_FALSE(IsUsable(dialog, "Take") || IsUsable(dialog, "Compare"));
        EXPECT_TRUE(IsUsable(dialog, "ThrowAway"));
        QTest::keyClick(&List(dialog), Qt::Key_Return);
        QTest::keyClick(&List(dialog), Qt::Key_Delete);
        // Not sure.
        EXPECT_EQ(store.left.size(), 4U);
        prompt.answers = {Answer::Yes};
        QTest::keyClick(&List(dialog), Qt::Key_Delete);
        EXPECT_EQ(store.left.size(), 3U);
        // Two of one file: the second is no window of that file.
        Press(dialog, "Take");
        Press(dialog, "Take");
        EXPECT_EQ(List(dialog).topLevelItemCount(), 1);
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(store.left.size(), 1U);
    EXPECT_TRUE(store.left.contains("c"));
    const auto setups = window->AllSetups();
    ASSERT_EQ(setups.size(), 2U);
    EXPECT_EQ(setups[0]->Session().File().path, path);
    EXPECT_EQ(setups[1]->Session().File().path, "");
    EXPECT_EQ(setups[1]->Session().settings.Name, "till");
    EXPECT_TRUE(setups[1]->IsChanged());
}

}  // namespace kelvora
