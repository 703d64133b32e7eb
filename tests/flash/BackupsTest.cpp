#include "flash/Backups.h"

#include <gtest/gtest.h>

#include "fakes/FakeFiles.h"
#include "flash/Images.h"

namespace kelvora {
namespace {

using namespace std::chrono;
using namespace std::chrono_literals;

TEST(Backups, AreListedByTheirTimeAndReadBack)
{
    FakeFiles files;
    local_seconds now = local_days(2026y / March / 9) + 7h + 5min;
    Backups backups(files, "/data/backups", [&] { return now; });
    EXPECT_TRUE(backups.List().empty());

    const FlashImage image = ImageOf(WholeChain);
    const std::string first = backups.Save(1, WholeChain, image);
    EXPECT_EQ(first, "/data/backups/2026-03-09 07-05-00 COM1.mem");
    EXPECT_TRUE(files.folders.contains("/data/backups"));
    EXPECT_TRUE(files.content[first].starts_with("'DeviceMap: COM1, 2026-03-09 07:05:00\r\n0000:00 D6 17 "));
    EXPECT_EQ(backups.Save(1, "\xBF", Filled(1)), "/data/backups/2026-03-09 07-05-00 COM1_2.mem");
    for (int number = 3; number <= 10; ++number)
        backups.Save(1, "\xBF", Filled(1));
    now += 24h;
    backups.Save(3, "", Filled(0xFF));
    files.content["/data/backups/broken.mem"] = "0000:00 oops\r\n";
    files.content["/data/backups/foreign.mem"] = FormatDump(0, image);
    files.content["/data/backups/locked.mem"] = "";
    files.unreadable.insert("/data/backups/locked.mem");
    files.content["/data/backups/notes.txt"] = "";

    const auto list = backups.List();
    ASSERT_EQ(list.size(), 14U);
    EXPECT_EQ(list[0].name, "2026-03-10 07-05-00 COM3.mem");
    EXPECT_EQ(list[0].origin, (BackupOrigin{3, now}));
    EXPECT_TRUE(list[0].IsWhole() && !list[0].IsForALine());
    EXPECT_EQ(list[1].name, "2026-03-09 07-05-00 COM1_10.mem");
    EXPECT_EQ(list[9].modules + list[10].modules, "\xBF" + std::string(WholeChain));
    EXPECT_EQ(list[11].readError, "Permission denied");
    EXPECT_TRUE(list[12].name == "foreign.mem" && list[12].IsForALine() && !list[12].origin);
    EXPECT_EQ(list[12].modules, DeviceCodesOf(image));
    EXPECT_EQ(list[13].damage.value().Line(), 1U);
    EXPECT_FALSE(list[11].IsWhole() || list[13].IsWhole());

    const FlashDump read = backups.Read(first);
    EXPECT_EQ(read.image, image);
    EXPECT_EQ(read.deviceMap.value().deviceMap, WholeChain);
}

}  // namespace
}  // namespace kelvora
