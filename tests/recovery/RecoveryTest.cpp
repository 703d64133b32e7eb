#include "recovery/Recovery.h"

#include <gtest/gtest.h>

#include "fakes/FakeFiles.h"
#include "fakes/MemoryRecovery.h"

namespace kelvora {
namespace {

const std::string Head = "[Kelvora]\r\nVersion = 2.0\r\n";
const std::string Badge = Head + "[MCR]\r\nTracks = 1,2  \r\nAutoread = OFF\r\n";
const std::string AutoBadge = Head + "[MCR]\r\nTracks = 1,2  \r\nAutoread = ON \r\n";
const std::string AllTracks = Head + "[MCR]\r\nTracks = 1,2,3\r\nAutoread = OFF\r\n";

RecoveryCopy CopyOf(const std::string& path)
{
    return {"2026-03-09 07:05:00", "till", path, path.empty() ? Head : Badge, AutoBadge};
}

TEST(RecoveryCopy, ComesBackAsItWasAndNoDamagePasses)
{
    RecoveryCopy copy = CopyOf(std::string("/t/\n\0\xC3\xA8 crc 3:/till.dat", 22));
    copy.saved.clear();
    const std::string text = RecoveryText(copy);
    EXPECT_EQ(text.substr(0, 47), "Kelvora recovery 1\ntime 19:2026-03-09 07:05:00\n");
    EXPECT_EQ(ReadRecoveryCopy(text), copy);
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::string damaged = text;
        damaged[i] = static_cast<char>(damaged[i] ^ 1);
        EXPECT_EQ(ReadRecoveryCopy(damaged), std::nullopt) << "byte " << i;
        EXPECT_EQ(ReadRecoveryCopy(text.substr(0, i)), std::nullopt) << "cut at " << i;
    }
    EXPECT_EQ(ReadRecoveryCopy(text + "\n"), std::nullopt);
    for (const char* time :
         {"time 99999999999999999999:x\n", "time 18446744073709551615:x\n", "time x", "time 1"})
        EXPECT_EQ(ReadRecoveryCopy(std::string("Kelvora recovery 1\n") + time), std::nullopt) << time;
}

class RecoveryTest : public testing::Test {
protected:
    void Leave(const std::string& id, const RecoveryCopy& copy) { store.left[id] = RecoveryText(copy); }

    FakeFiles files;
    MemoryRecovery store;
    Recovery recovery{store, files};
};

TEST_F(RecoveryTest, KeepsEachChangeOnceAndNothingThatIsEmpty)
{
    RecoveryCopy copy = CopyOf("/t/till.dat");
    recovery.Keep(1, copy);
    recovery.Keep(1, copy);
    EXPECT_EQ(store.writes, 1);
    const auto kept = ReadRecoveryCopy(store.copies.at(1));
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->setup, AutoBadge);
    EXPECT_EQ(kept->time.size(), 19U);

    // What could not be written is tried again, and the copy before it stays until then.
    copy.setup = AllTracks;
    store.isFull = true;
    EXPECT_THROW(recovery.Keep(1, copy), FileError);
    EXPECT_EQ(ReadRecoveryCopy(store.copies.at(1))->setup, AutoBadge);
    store.isFull = false;
    recovery.Keep(1, copy);
    EXPECT_EQ(ReadRecoveryCopy(store.copies.at(1))->setup, AllTracks);

    // An empty line was scanned: undo would bring back what was there.
    copy = CopyOf("");
    copy.setup = Head;
    recovery.Keep(1, copy);
    EXPECT_EQ(ReadRecoveryCopy(store.copies.at(1))->setup, AllTracks);
    recovery.Keep(2, copy);
    EXPECT_FALSE(store.copies.contains(2));
    recovery.Keep(3, CopyOf(""));
    recovery.Drop(1);
    EXPECT_EQ(store.copies.size(), 1U);
    recovery.DropAll();
    EXPECT_TRUE(store.copies.empty());
}

TEST_F(RecoveryTest, OffersSayWhatBecameOfTheFileAndWhatDiffers)
{
    // On the disk there is no file where `onDisk` is empty.
    const auto check = [&](const char* why, const char* path, const std::string& onDisk, bool readable,
                           FileSince file, std::size_t differences) {
        SCOPED_TRACE(why);
        files.content.clear();
        files.unreadable.clear();
        if (!onDisk.empty())
            files.content[path] = onDisk;
        if (!readable)
            files.unreadable.insert(path);
        Leave("a", CopyOf(path));
        const auto offers = recovery.Offers();
        ASSERT_EQ(offers.size(), 1U);
        EXPECT_EQ(offers[0].damage, RecoveryDamage::None);
        EXPECT_EQ(offers[0].file, file);
        EXPECT_EQ(offers[0].differences.size(), differences);
    };
    check("no file yet: all of it is new", "", "", true, FileSince::None, 1);
    check("as it was", "/t/1.dat", Badge, true, FileSince::Same, 1);
    check("the same, in other words", "/t/1.dat", "'by hand\r\n" + Badge, true, FileSince::Same, 1);
    check("changed: that is what a save replaces", "/t/1.dat", AllTracks, true, FileSince::Changed, 2);
    check("gone: what it held serves", "/t/1.dat", "", true, FileSince::Gone, 1);
    check("unreadable", "/t/1.dat", Badge, false, FileSince::Unreadable, 1);
    check("no setup any more", "/t/1.dat", "[Kelvora]\r\nrubbish\r\n", true, FileSince::Unreadable, 1);
}

TEST_F(RecoveryTest, WhatIsSavedIsNotOfferedAndWhatIsDamagedStays)
{
    files.content["/t/saved.dat"] = AutoBadge;
    Leave("saved", CopyOf("/t/saved.dat"));
    RecoveryCopy older = CopyOf("/t/its file is gone.dat");
    older.time = "2026-03-08 07:05:00";
    older.setup = older.saved;
    Leave("second", CopyOf(""));
    Leave("third", older);
    store.left["torn"] = "Kelvora recovery 1\ntime 19:2026";
    RecoveryCopy foreign = CopyOf("");
    foreign.setup = "[Kelvora]\r\nrubbish\r\n";
    Leave("newer program", foreign);
    store.left["unreadable"] = "";

    const auto offers = recovery.Offers();
    ASSERT_EQ(offers.size(), 5U);
    EXPECT_FALSE(store.left.contains("saved"));
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NE(offers[i].damage, RecoveryDamage::None) << offers[i].id;
    EXPECT_EQ(offers[2].error, "Input/output error");
    EXPECT_EQ(offers[3].id, "third");
    EXPECT_EQ(offers[4].id, "second");

    recovery.ThrowAway(offers[0]);
    EXPECT_EQ(store.left.size(), 4U);
    // Taken, it is the window's own: kept as it is, and gone with the change.
    recovery.Take(offers[4], 7);
    const int writes = store.writes;
    recovery.Keep(7, CopyOf(""));
    EXPECT_EQ(store.writes, writes);
    recovery.Drop(7);
    EXPECT_TRUE(store.copies.empty());
}

}  // namespace
}  // namespace kelvora
