#include "platform/posix/FileBatch.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <random>

using namespace kelvora;
namespace fs = std::filesystem;

namespace {

class FileBatchTest : public testing::Test {
protected:
    FileBatchTest()
    {
        std::string name = testing::TempDir() + "kelvora-batch-" + std::string(6, 'X');
        EXPECT_NE(mkdtemp(name.data()), nullptr);
        folder = name;
    }
    ~FileBatchTest() override { fs::remove_all(folder); }

    std::string At(const std::string& name) const { return folder + "/" + name; }
    std::string Till(int number) const { return At("till" + std::to_string(number)); }
    auto Count() const { return std::distance(fs::directory_iterator(folder), {}); }

    void Save(FileBatch& batch, const std::string& name, const std::string& text) const
    {
        batch.Copy(At(name + ".dat"), At(name + ".bak"));
        batch.Write(At(name + ".dat"), text);
    }

    std::string folder;
    PosixFiles files;
};

}  // namespace

TEST_F(FileBatchTest, ChangesAllAtItsEndAndTellsWhatItCouldNot)
{
    for (const char* const name : {"a.dat", "linked.dat", "real.dat", "lost.dat", "early.dat"})
        files.Write(At(name), std::string("old ") + name);
    fs::permissions(At("a.dat"), fs::perms{0640});
    fs::create_hard_link(At("linked.dat"), At("other"));
    fs::create_symlink("real.dat", At("link.dat"));
    files.Write(At("a.bak"), "older");
    FileBatch batch;
    for (const char* const name : {"a", "linked", "link", "lost"})
        Save(batch, name, std::string("new ") + name);
    batch.Write(At("fresh.dat"), "fresh");
    fs::create_directory(At("early.bak"));
    EXPECT_THROW(batch.Copy(At("early.dat"), At("early.bak")), FileError);
    EXPECT_THROW(batch.Write(folder, "x"), FileError);
    EXPECT_EQ(files.Read(At("a.dat")), "old a.dat") << "nothing has been put in its place yet";
    EXPECT_EQ(files.Read(At("a.bak")), "older");
    EXPECT_FALSE(files.Exists(At("fresh.dat")));

    fs::remove(At("lost.dat"));
    fs::create_directory(At("lost.dat"));
    const auto failures = batch.Commit();
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].path, At("lost.dat"));
    EXPECT_EQ(failures[0].error.Path(), At("lost.dat"));
    for (const auto& [name, text] : std::map<std::string, std::string>{{"a.dat", "new a"},
                                                                       {"a.bak", "old a.dat"},
                                                                       {"linked.dat", "new linked"},
                                                                       {"linked.bak", "old linked.dat"},
                                                                       {"other", "old linked.dat"},
                                                                       {"real.dat", "new link"},
                                                                       {"link.bak", "old real.dat"},
                                                                       {"lost.bak", "old lost.dat"},
                                                                       {"fresh.dat", "fresh"}})
        EXPECT_EQ(files.Read(At(name)), text) << name;
    EXPECT_TRUE(fs::is_symlink(At("link.dat")));
    EXPECT_EQ(fs::status(At("a.dat")).permissions(), fs::perms{0640});
    // The other name's file is not the backup: who writes into it must not reach that.
    EXPECT_EQ(fs::hard_link_count(At("other")), 1U);
    EXPECT_TRUE(batch.Commit().empty());
    EXPECT_EQ(Count(), 13);
}

TEST_F(FileBatchTest, AKillLeavesWholeFilesAndBackups)
{
    constexpr int Tills = 5;
    const auto save = [&](int round) {
        FileBatch batch;
        for (int till = 0; till < Tills; ++till)
            Save(batch, "till" + std::to_string(till),
                 std::string(3000, static_cast<char>('a' + round % 20)));
        return batch.Commit().empty();
    };
    for (int till = 0; till < Tills; ++till)
        files.Write(Till(till) + ".dat", std::string(3000, 'z'));
    using Clock = std::chrono::steady_clock;
    std::mt19937 random(4);
    int caught = 0;
    for (int round = 0; round < 30; ++round) {
        const pid_t child = fork();
        if (child == 0)
            for (int more = 0;; ++more)
                save(more);
        const auto end = Clock::now() + std::chrono::microseconds(random() % 60000);
        while (Clock::now() < end) {
        }
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        caught += Count() > 2 * Tills ? 1 : 0;
        for (int till = 0; till < Tills; ++till)
            for (const char* const ending : {".dat", ".bak"})
                if (const std::string path = Till(till) + ending; files.Exists(path)) {
                    const std::string text = files.Read(path);
                    ASSERT_EQ(text, std::string(3000, text.at(0))) << path << " in round " << round;
                }
        ASSERT_TRUE(save(round));
        ASSERT_EQ(Count(), 2 * Tills) << "in round " << round;
    }
    EXPECT_GT(caught, 5) << "too few came in the middle of a batch";
}
