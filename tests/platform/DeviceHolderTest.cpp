#include "platform/posix/DeviceHolder.h"

#include <fcntl.h>
#include <sys/file.h>

#include <fstream>

#include "fakes/TestFolder.h"
#include "platform/posix/Descriptor.h"

namespace kelvora {
namespace {

namespace fs = std::filesystem;

// A machine of a few processes in a folder of its own.
class DeviceHolder : public testing::Test {
protected:
    DeviceHolder()
    {
        fs::create_directories(root / "lock");
        fs::create_directories(root / "dev");
        Write("dev/ttyUSB0", "");
        Process("12", "minicom", {});
        Process("309", "kelvora-cli", {"/dev/null"});
    }

    void Write(const std::string& name, const std::string& text) const { std::ofstream(root / name) << text; }

    void Process(const std::string& number, const std::string& name, const std::vector<fs::path>& open) const
    {
        const std::string folder = "proc/" + number;
        fs::create_directories(root / folder / "fd");
        Write(folder + "/comm", name + "\n");
        for (std::size_t i = 0; i < open.size(); ++i)
            fs::create_symlink(open[i], root / folder / "fd" / std::to_string(i));
    }

    std::string Find(const std::string& device) const
    {
        return FindDeviceHolder(device, {{root / "none", root / "lock"}, root / "proc"});
    }

    TestFolder own;
    fs::path root = own.Path();
};

TEST_F(DeviceHolder, IsNamedByALockFileOfALivingProcess)
{
    EXPECT_EQ(Find("/dev/ttyS0"), "");
    const auto check = [&](const std::string& text, const char* holder, const std::string& lock = "ttyS0",
                           const char* device = "/dev/ttyS0") {
        Write("lock/LCK.." + lock, text);
        EXPECT_EQ(Find(device), holder) << lock << text;
    };
    check("        12\n", "minicom (PID 12)");
    check("99\n", "");
    check("../12\n", "");
    check(std::string(1, '\x0C') + std::string(3, '\0'), "");
    check("12", "minicom (PID 12)", "pts_5", "/dev/pts/5");
}

TEST_F(DeviceHolder, LeavesALockOfTheLivingAndRemovesThatOfTheDead)
{
    const HolderSources sources{{root / "none", root / "lock"}, root / "proc"};
    const fs::path lock = root / "lock/LCK..ttyS0";
    EXPECT_FALSE(RemoveDeadLocks("/dev/ttyS0", sources));
    const auto check = [&](const std::string& text, bool isDead, bool isByNumber) {
        Write("lock/LCK..ttyS0", text);
        const kelvora::Descriptor open(::open(lock.c_str(), O_RDWR));
        EXPECT_EQ(flock(open.Number(), LOCK_EX), 0);
        EXPECT_FALSE(RemoveDeadLocks("/dev/ttyS0", sources)) << text << ", which a program has locked";
        EXPECT_EQ(flock(open.Number(), LOCK_UN), 0);
        EXPECT_EQ(IsLockedByNumber("/dev/ttyS0", sources), isByNumber) << text;
        EXPECT_EQ(RemoveDeadLocks("/dev/ttyS0", sources), isDead) << text;
        EXPECT_EQ(fs::exists(lock), !isDead) << text;
    };
    check("", true, false);
    check("        90\n", true, false);
    check("99\nkelvora-c", true, false);
    check("        12\n", false, true);
    check("309\nkelvora-cli\ntill07\n", false, false);
    check(std::string(1, '\x0C') + std::string(3, '\0'), false, false);
}

TEST_F(DeviceHolder, OrIsWhoHasTheDeviceOpen)
{
    const fs::path device = root / "dev/ttyUSB0";
    const fs::path link = root / "dev/adapter";
    fs::create_symlink(device, link);
    EXPECT_EQ(Find(device), "");
    Process("6", "kelvora-bench", {device, "/dev/ptmx"});
    EXPECT_EQ(Find(device), "") << "the other end of the line";
    Process("7", "picocom", {"/dev/null", device});
    EXPECT_EQ(Find(device), "picocom (PID 7)");
    EXPECT_EQ(Find(link), "picocom (PID 7)");
    Write("lock/LCK..ttyUSB0", "12");
    EXPECT_EQ(Find(link), "minicom (PID 12)") << "its lock counts first, also under the device's own name";
}

}  // namespace
}  // namespace kelvora
