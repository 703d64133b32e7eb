#include "platform/posix/PosixFiles.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <numeric>
#include <random>

using namespace kelvora;
namespace fs = std::filesystem;

namespace {

constexpr uid_t Nobody = 65534;

class PosixFilesTest : public testing::Test {
protected:
    PosixFilesTest()
    {
        std::string name = testing::TempDir() + "kelvora-files-" + std::string(6, 'X');
        EXPECT_NE(mkdtemp(name.data()), nullptr);
        folder = name;
        fs::permissions(folder, fs::perms::all);
    }
    ~PosixFilesTest() override { fs::remove_all(folder); }

    std::string At(const std::string& name) const { return folder + "/" + name; }
    auto Count() const { return std::distance(fs::directory_iterator(folder), {}); }
    bool IsRefused(const std::string& path)
    {
        try {
            files.Write(path, std::string(5000, 'x'));
            return false;
        } catch (const FileError& error) {
            return error.Path() == path && *error.what() != '\0';
        }
    }

    std::string folder;
    PosixFiles files;
};

// Runs `action` in a process of its own, so that what it does to itself ends with it.
bool SucceedsInChild(const std::function<bool()>& action)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(action() ? 0 : 1);
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

TEST_F(PosixFilesTest, KeepsBytesPermissionsAndLinks)
{
    std::string everyByte(256, '\0');
    std::iota(everyByte.begin(), everyByte.end(), '\0');
    files.Write(At("\xE8.dat"), "old");
    fs::permissions(At("\xE8.dat"), fs::perms{0604});
    fs::create_directory(At("sub"));
    fs::create_symlink("../\xE8.dat", At("sub/inner"));
    fs::create_symlink("sub/inner", At("outer"));
    files.Write(At("outer"), everyByte);
    EXPECT_TRUE(fs::is_symlink(At("outer")) && fs::is_symlink(At("sub/inner")));
    EXPECT_EQ(files.Read(At("\xE8.dat")), everyByte);
    files.Copy(At("outer"), At("copy"));
    EXPECT_EQ(files.Read(At("copy")), everyByte);
    for (const char* name : {"\xE8.dat", "copy"})
        EXPECT_EQ(fs::status(At(name)).permissions(), fs::perms{0604})
            << "a backup is as private as its file";

    fs::create_symlink("made", At("ahead"));
    EXPECT_FALSE(files.Exists(At("ahead")));
    files.Write(At("ahead"), "x");
    EXPECT_EQ(files.Read(At("made")), "x") << "a link may lead to a file that is still to be made";
    EXPECT_EQ(Count(), 6) << "nothing else stays behind";
}

TEST_F(PosixFilesTest, RefusesWhatIsNoFile)
{
    fs::create_directory(At("folder"));
    ASSERT_EQ(mkfifo(At("pipe").c_str(), 0666), 0);
    fs::create_symlink("loop", At("loop"));
    for (const char* name : {"folder", "pipe", "loop", "absent/file"}) {
        EXPECT_THROW(files.Read(At(name)), FileError) << name;
        EXPECT_TRUE(IsRefused(At(name))) << name;
    }
    EXPECT_EQ(Count(), 3);
}

TEST_F(PosixFilesTest, ReadsNoFileThatIsTooLarge)
{
    files.Write(At("large"), "");
    fs::resize_file(At("large"), MaximumFileSize);
    EXPECT_EQ(files.Read(At("large")).size(), MaximumFileSize);
    for (const std::uintmax_t size : {MaximumFileSize + 1, std::size_t{1} << 40U}) {
        fs::resize_file(At("large"), size);
        try {
            files.Read(At("large"));
            ADD_FAILURE() << size << " bytes were read";
        } catch (const FileError& error) {
            EXPECT_STREQ(error.what(), "File too large");
        }
    }
}

TEST_F(PosixFilesTest, AFailedWriteLeavesTheOldText)
{
    struct Row {
        const char* reason;
        unsigned file, folder;
        rlim_t largest;
    };
    for (const Row& row :
         {Row{"read-only file", 0444, 0777, RLIM_INFINITY},
          Row{"read-only folder", 0666, 0555, RLIM_INFINITY}, Row{"full disk", 0666, 0777, 1000}}) {
        SCOPED_TRACE(row.reason);
        files.Write(At("a"), "old");
        fs::permissions(At("a"), fs::perms{row.file});
        fs::permissions(folder, fs::perms{row.folder});
        EXPECT_TRUE(SucceedsInChild([&] {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{row.largest, row.largest};
            // The administrator may write anywhere.
            if (setrlimit(RLIMIT_FSIZE, &limit) != 0 || (geteuid() == 0 && setuid(Nobody) != 0))
                return false;
            return IsRefused(At("a"));
        }));
        EXPECT_EQ(files.Read(At("a")), "old");
        EXPECT_EQ(Count(), 1) << "what was begun is taken away";
        fs::permissions(folder, fs::perms::all);
        fs::remove(At("a"));
    }
}

TEST_F(PosixFilesTest, PassesOverWhatAKilledSaveLeft)
{
    const std::string left = At(".kelvora-" + std::to_string(getpid()) + "-0.tmp");
    files.Write(left, "left");
    files.Write(At("a"), "new");
    EXPECT_EQ(files.Read(left), "left");
    EXPECT_EQ(files.Read(At("a")), "new");
    EXPECT_EQ(Count(), 2);
}

TEST_F(PosixFilesTest, AKillLeavesAWholeFile)
{
    const std::array<std::string, 2> texts{std::string(300, 'a'), std::string(200000, 'b')};
    const auto save = [&](std::size_t round) {
        files.Copy(At("setup.dat"), At("setup.bak"));
        files.Write(At("setup.dat"), texts.at(round % texts.size()));
    };
    using Clock = std::chrono::steady_clock;
    files.Write(At("setup.dat"), texts[0]);
    const auto start = Clock::now();
    save(0);
    save(1);
    const auto twoSaves = (Clock::now() - start).count();

    std::mt19937_64 random(11);
    for (int kills = 0; kills < 200; ++kills) {
        std::array<int, 2> started{};
        ASSERT_EQ(pipe(started.data()), 0);
        const pid_t child = fork();
        if (child == 0) {
            for (std::size_t round = 0; write(started[1], "", 1) == 1; ++round)
                save(round);
            _exit(1);
        }
        char byte = 0;
        EXPECT_EQ(read(started[0], &byte, 1), 1);
        const auto end =
            Clock::now() + Clock::duration(static_cast<Clock::rep>(random() % 1000) * twoSaves / 1000);
        while (Clock::now() < end) {
        }
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        close(started[0]);
        close(started[1]);
        for (const char* name : {"setup.dat", "setup.bak"}) {
            const std::string found = files.Read(At(name));
            ASSERT_TRUE(found == texts[0] || found == texts[1]) << name << " after " << kills << " kills";
        }
    }
    EXPECT_GT(Count(), 2) << "no kill came in the middle of a write: nothing was tested";
}

TEST_F(PosixFilesTest, MakesAndListsFolders)
{
    EXPECT_TRUE(files.List(At("a/b")).empty()) << "no such folder";
    files.MakeFolder(At("a/b"));
    files.MakeFolder(At("a/b"));
    EXPECT_EQ(fs::status(At("a/b")).permissions(), fs::perms::owner_all);
    files.Write(At("a/b/two"), "");
    files.Write(At("a/b/one"), "");
    EXPECT_EQ(files.List(At("a/b")), (std::vector<std::string>{"one", "two"}));
    EXPECT_THROW(files.List(At("a/b/one")), FileError);
    EXPECT_THROW(files.MakeFolder(At("a/b/one")), FileError);
    EXPECT_THROW(files.MakeFolder(At("a/b/one/c")), FileError);
}
