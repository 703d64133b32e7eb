#include "recovery/posix/RecoveryFolder.h"

#include "fakes/TestFolder.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora {
namespace {

namespace fs = std::filesystem;

class RecoveryFolderTest : public testing::Test {
protected:
    /// A run of the program; with its end, whatever ends it, the lock goes and the copies stay.
    std::unique_ptr<RecoveryFolder> Run() { return std::make_unique<RecoveryFolder>(files, folder); }

    auto Count() const { return std::distance(fs::directory_iterator(folder), {}); }
    static std::string Texts(RecoveryFolder& run)
    {
        std::string texts;
        for (const LeftCopy& left : run.Claim())
            texts += left.text + ";";
        return texts;
    }

    PosixFiles files;
    TestFolder own;
    const std::string& above = own.Path();
    std::string folder = above + "/state/recovery";
};

TEST_F(RecoveryFolderTest, AStartWithoutCopiesAndACleanEndLeaveNothing)
{
    auto run = Run();
    EXPECT_TRUE(run->Claim().empty());
    run->Release();
    EXPECT_FALSE(fs::exists(folder));
    run->Keep(1, "one");
    run->Keep(2, "two");
    run->Keep(1, "one again");
    EXPECT_EQ(Count(), 3);
    run->Drop(1);
    run->Drop(2);
    run->Drop(2);
    EXPECT_EQ(Count(), 0);
    run->Keep(3, "three");
    run->Drop(3);
    EXPECT_EQ(Count(), 0);
}

TEST_F(RecoveryFolderTest, OnlyTheCopiesOfTheDeadAreClaimedAndByOneRunAlone)
{
    auto dead = Run();
    dead->Keep(1, "dead one");
    dead->Keep(2, "dead two");
    auto living = Run();
    living->Keep(1, "living");
    dead.reset();

    auto first = Run();
    auto second = Run();
    first->Keep(1, "own");
    const auto left = first->Claim();
    ASSERT_EQ(left.size(), 2U);
    EXPECT_EQ(left[0].text, "dead one");
    EXPECT_EQ(Texts(*second), "");

    // One is taken, one thrown away: nothing of the dead run is left.
    first->Adopt(left[0].id, 5);
    first->Remove(left[1].id);
    first->Release();
    EXPECT_EQ(Texts(*second), "");
    EXPECT_EQ(Count(), 5);  // two runs with their locks, and one copy more
    // What was taken dies with the one that took it, and is left again.
    first.reset();
    EXPECT_EQ(Texts(*second), "own;dead one;");
    // Put off: the next start has it again.
    second->Release();
    EXPECT_EQ(Texts(*Run()), "own;dead one;");
}

TEST_F(RecoveryFolderTest, WhatIsNoCopyIsLeftAloneAndALostLockLosesNothing)
{
    fs::create_directories(folder);
    for (const char* name :
         {"notes.txt", "notes.copy", ".lock", "-1.copy", "7-notes.txt", "7.copy", "1000000-1.copy"})
        files.Write(folder + "/" + name, "mine");
    files.Write(folder + "/4-1.copy", "without lock");
    fs::create_directory(folder + "/5.lock");
    files.Write(folder + "/5-1.copy", "cannot be claimed");
    auto run = Run();
    run->Keep(1, "own");
    EXPECT_TRUE(fs::exists(folder + "/6-1.copy"));
    const auto left = run->Claim();
    ASSERT_EQ(left.size(), 2U);
    EXPECT_EQ(left[0].text + left[0].error, "without lock");
    EXPECT_EQ(left[1].text, "");
    EXPECT_NE(left[1].error, "");
    run->Release();
    fs::remove_all(folder);
    run->Keep(1, "again");
    run->Drop(1);
    EXPECT_EQ(Count(), 0);
}

TEST_F(RecoveryFolderTest, AFolderThatCannotBeUsedIsAnError)
{
    files.Write(above + "/state", "a file");
    auto run = Run();
    EXPECT_THROW(run->Keep(1, "one"), FileError);
    EXPECT_THROW(run->Claim(), FileError);
    EXPECT_THROW(run->Remove(folder + "/1-1.copy"), FileError);
    run->Drop(1);
}

}  // namespace
}  // namespace kelvora
