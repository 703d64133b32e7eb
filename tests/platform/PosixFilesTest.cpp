#include "platform/posix/PosixFiles.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <grp.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <functional>
#include <numeric>

#include "fakes/TestFolder.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/FileBatch.h"

using namespace kelvora;
namespace fs = std::filesystem;

namespace {

constexpr uid_t Nobody = 65534;

class PosixFilesTest : public testing::Test {
protected:
    PosixFilesTest() { fs::permissions(folder, fs::perms::all); }

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

    void Save(FileBatch& batch, const std::string& name, const std::string& text) const
    {
        batch.Copy(At(name + ".dat"), At(name + ".bak"));
        batch.Write(At(name + ".dat"), text);
    }

    TestFolder own;
    const std::string& folder = own.Path();
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

    fs::create_symlink(At("made"), At("ahead"));
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
    EXPECT_THAT(files.Read("/proc/version"),
                testing::AllOf(testing::StartsWith("Linux version "), testing::EndsWith("\n")))
        << "of a file that tells no size";
    files.Write(At("large"), "");
    fs::resize_file(At("large"), MaximumFileSize);
    EXPECT_EQ(files.Read(At("large")).size(), MaximumFileSize);
    for (const std::uintmax_t size : {MaximumFileSize + 1, std::size_t{1} << 40U}) {
        fs::resize_file(At("large"), size);
        EXPECT_THAT([&] { files.Read(At("large")); },
                    testing::ThrowsMessage<FileError>(testing::StrEq("File too large")))
            << size;
    }
}

TEST_F(PosixFilesTest, AFailedWriteLeavesTheOldText)
{
    const auto check = [&](const char* reason, unsigned file, unsigned folderMode, rlim_t largest) {
        SCOPED_TRACE(reason);
        files.Write(At("a"), "old");
        fs::permissions(At("a"), fs::perms{file});
        fs::permissions(folder, fs::perms{folderMode});
        EXPECT_TRUE(SucceedsInChild([&] {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{largest, largest};
            // The administrator may write anywhere.
            if (setrlimit(RLIMIT_FSIZE, &limit) != 0 || (geteuid() == 0 && setuid(Nobody) != 0))
                return false;
            return IsRefused(At("a"));
        }));
        EXPECT_EQ(files.Read(At("a")), "old");
        EXPECT_EQ(Count(), 1) << "what was begun is taken away";
        fs::permissions(folder, fs::perms::all);
        fs::remove(At("a"));
    };
    check("read-only file", 0444, 0777, RLIM_INFINITY);
    check("read-only folder", 0666, 0555, RLIM_INFINITY);
    check("full disk", 0666, 0777, 1000);
}

TEST_F(PosixFilesTest, AFileOfAGroupStaysItsOwnWhoeverOfItWrites)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only the administrator may become another user";
    constexpr gid_t Other = 65533;
    for (const gid_t group : {Other, Nobody}) {
        files.Write(At("a"), "old");
        fs::permissions(At("a"), fs::perms{0666});
        ASSERT_EQ(chown(At("a").c_str(), 0, Nobody), 0);
        EXPECT_TRUE(SucceedsInChild([&] {
            const bool isOfIt = setgroups(1, &group) == 0 && setgid(Other) == 0 && setuid(Nobody) == 0;
            files.Write(At("a"), "new");
            return isOfIt;
        }));
        struct stat status {};
        ASSERT_EQ(stat(At("a").c_str(), &status), 0);
        EXPECT_EQ(status.st_gid, group);
        EXPECT_EQ(status.st_mode & 0777, group == Nobody ? 0666 : 0606) << "no right of another group's";
    }
}

TEST_F(PosixFilesTest, OnlyWhatWasLeftForThatVeryFileIsTakenAway)
{
    // The name of what a save of that file leaves that is killed in the middle: the system ends who writes
    // more.
    const auto leftBy = [&](const std::string& name) {
        const auto before = files.List(folder);
        EXPECT_FALSE(SucceedsInChild([&] {
            const rlimit limit{1000, 1000};
            setrlimit(RLIMIT_FSIZE, &limit);
            return !IsRefused(At(name));
        }));
        auto added = files.List(folder);
        std::erase_if(added, [&](const std::string& each) { return std::ranges::count(before, each); });
        return added.at(0);
    };
    files.Write(At("a"), "");
    files.Write(At("b"), "");
    const std::string other = leftBy("b");
    const std::string left = leftBy("a");
    const std::string start = left.substr(0, left.rfind('-'));
    fs::create_directory(At(start + "-1.tmp"));
    fs::create_symlink("b", At(start + "-2.tmp"));
    fs::rename(At(left), At(start + "-7.tmp"));
    for (const char* ending : {".tmp", "-.tmp", "-01.tmp", "-x.tmp", "-1.tmp~", "-8.tmp"})
        files.Write(At(start + ending), "");
    auto expected = files.List(folder);
    std::erase(expected, start + "-7.tmp");
    fs::create_directory_symlink(".", At("..data"));
    fs::create_symlink("..data/a", At("link"));
    files.Write(At("link"), "new");
    fs::remove(At("link"));
    fs::remove(At("..data"));
    EXPECT_EQ(files.List(folder), expected);
    EXPECT_EQ(files.Read(At("a")), "new");
    {
        const Descriptor living(open(At(other).c_str(), O_RDONLY | O_CLOEXEC));
        ASSERT_EQ(flock(living.Number(), LOCK_EX), 0);
        files.Write(At("b"), "new");
        EXPECT_TRUE(files.Exists(At(other))) << "a living save has it";
    }
    files.Write(At("b"), "new");
    EXPECT_FALSE(files.Exists(At(other)));
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
    files.Remove(At("a/b/two"));
    EXPECT_THROW(files.Remove(At("a/b/two")), FileError);
    EXPECT_THROW(files.List(At("a/b/one")), FileError);
    EXPECT_THROW(files.MakeFolder(At("a/b/one")), FileError);
    EXPECT_THROW(files.MakeFolder(At("a/b/one/c")), FileError);
}

TEST_F(PosixFilesTest, ABatchChangesAllAtItsEndAndTellsWhatItCouldNot)
{
    for (const char* const name : {"a.dat", "linked.dat", "real.dat", "unkept.dat", "lost.dat", "early.dat"})
        files.Write(At(name), std::string("old ") + name);
    fs::permissions(At("a.dat"), fs::perms{0640});
    fs::create_hard_link(At("linked.dat"), At("other"));
    fs::create_symlink("real.dat", At("link.dat"));
    files.Write(At("a.bak"), "older");
    const Descriptor former(open(At("a.dat").c_str(), O_RDONLY | O_CLOEXEC));
    FileBatch batch;
    for (const char* const name : {"a", "linked", "link", "unkept", "lost"})
        Save(batch, name, std::string("new ") + name);
    batch.Write(At("fresh.dat"), "fresh");
    fs::create_directory(At("early.bak"));
    EXPECT_THROW(batch.Copy(At("early.dat"), At("early.bak")), FileError);
    EXPECT_THROW(batch.Write(folder, "x"), FileError);
    EXPECT_EQ(files.Read(At("a.dat")), "old a.dat") << "nothing has been put in its place yet";
    EXPECT_EQ(files.Read(At("a.bak")), "older");
    EXPECT_FALSE(files.Exists(At("fresh.dat")));

    fs::create_directory(At("unkept.bak"));
    fs::remove(At("lost.dat"));
    fs::create_directory(At("lost.dat"));
    std::vector<std::string> failures;
    for (const FileBatch::Failure& failure : batch.Commit())
        failures.push_back(failure.path + " at " + failure.error.Path());
    EXPECT_THAT(failures, testing::ElementsAre(At("unkept.dat") + " at " + At("unkept.bak"),
                                               At("lost.dat") + " at " + At("lost.dat")));
    const std::pair<const char*, const char*> held[]{
        {"a.dat", "new a"},           {"a.bak", "old a.dat"},
        {"linked.dat", "new linked"}, {"linked.bak", "old linked.dat"},
        {"other", "old linked.dat"},  {"real.dat", "new link"},
        {"link.bak", "old real.dat"}, {"lost.bak", "old lost.dat"},
        {"fresh.dat", "fresh"},       {"unkept.dat", "old unkept.dat"}};
    for (const auto& [name, text] : held)
        EXPECT_EQ(files.Read(At(name)), text) << name;
    EXPECT_TRUE(IsNameOf(At("a.bak"), former)) << "what need not be copied is not";
    EXPECT_TRUE(fs::is_symlink(At("link.dat")));
    EXPECT_EQ(fs::status(At("a.dat")).permissions(), fs::perms{0640});
    // The other name's file is not the backup: who writes into it must not reach that.
    EXPECT_EQ(fs::hard_link_count(At("other")), 1U);
    EXPECT_TRUE(batch.Commit().empty());
    EXPECT_EQ(Count(), 15);
}

TEST_F(PosixFilesTest, ABatchHasTheRoomThatTheSystemGives)
{
    const struct {
        rlim_t present, most, raised;
        std::size_t batches, room;
    } rows[]{{100, 1000, 1000, 2, 234}, {66, 66, 66, 2, 1}, {100, 5000, 4160, 1, 2048}};
    for (const auto& row : rows)
        EXPECT_TRUE(SucceedsInChild([&] {
            rlimit limit{row.present, row.most};
            return setrlimit(RLIMIT_NOFILE, &limit) == 0 && FileBatch::Room(row.batches) == row.room &&
                   getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur == row.raised;
        })) << row.room;
}
