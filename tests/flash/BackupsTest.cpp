#include "flash/Backups.h"

#include <gtest/gtest.h>

#include "fakes/FakeFiles.h"
#include "flash/Images.h"

namespace kelvora {
namespace {

using namespace std::chrono;
using namespace std::chrono_literals;

std::string Spoilt(std::string dump)
{
    return dump.replace(dump.rfind("FF "), 2, "FE");
}

TEST(BackupTitle, HasOneForm)
{
    const auto time = local_days(2026y / March / 9) + 7h + 5min;
    EXPECT_EQ(OriginOf("2026-03-09 07:05:00"), (BackupOrigin{0, time}));
    for (const char* const other : {"COM1, 2026-03-08 31:05:00", "COM1, 2026-02-30 07:05:00",
                                    "COM1, 2026-03-09 07-05-00", "2026-03-09 07:05:00 "})
        EXPECT_EQ(OriginOf(other), std::nullopt) << other;
}

TEST(Backups, AreListedByTheirTimeAndReadBack)
{
    FakeFiles files;
    local_seconds now = local_days(2026y / March / 9) + 7h + 5min;
    Backups backups(files, "/data/backups", [&] { return now; });
    EXPECT_TRUE(backups.List().empty());

    const FlashImage image = ImageOf(WholeChain);
    const std::string first = backups.Keep({1, WholeChain, "TILL 7", image});
    EXPECT_EQ(first, "/data/backups/2026-03-09 07-05-00 COM1.mem");
    EXPECT_EQ(backups.Keep({1, WholeChain, "TILL 7", image}), first) << "in the same second";
    EXPECT_TRUE(files.folders.contains("/data/backups"));
    EXPECT_TRUE(files.content[first].starts_with("'DeviceMap: COM1, 2026-03-09 07:05:00\r\n0000:00 D6 17 "));
    for (int number = 2; number <= 10; ++number)
        EXPECT_EQ(backups.Keep({1, "\xBF", "", Filled(static_cast<std::uint8_t>(number))}),
                  "/data/backups/2026-03-09 07-05-00 COM1_" + std::to_string(number) + ".mem");
    now += 24h;
    backups.Keep({3, "", "", Filled(0xFF)});
    files.content["/data/backups/2026-03-09 07-04-00 COM2_7.mem"] = "0000:00 oops\r\n";
    files.content["/data/backups/COM1.mem"] = "0000:00 oops\r\n";
    files.content["/data/backups/foreign.mem"] = FormatDump(0, image);
    files.content["/data/backups/locked.mem"] = "";
    files.unreadable.insert("/data/backups/locked.mem");
    files.content["/data/backups/notes.txt"] = "";

    const auto list = backups.List();
    ASSERT_EQ(list.size(), 15U);
    EXPECT_EQ(list[0].name, "2026-03-10 07-05-00 COM3.mem");
    EXPECT_EQ(list[0].origin, (BackupOrigin{3, now}));
    EXPECT_TRUE(list[0].IsWhole() && list[0].modules.empty());
    EXPECT_EQ(list[1].name, "2026-03-09 07-05-00 COM1_10.mem");
    EXPECT_EQ(list[9].modules + list[10].modules, "\xBF" + std::string(WholeChain));
    EXPECT_EQ(list[11].damage.value().Line(), 1U);
    EXPECT_EQ(list[11].origin, (BackupOrigin{2, now - 24h - 1min})) << "by its name alone";
    EXPECT_EQ(list[12].readError, "Permission denied");
    EXPECT_TRUE(list[13].name == "foreign.mem" && list[13].IsWhole() && !list[13].origin && !list[13].kind);
    EXPECT_EQ(list[13].modules, DeviceCodesOf(image));
    EXPECT_TRUE(list[14].name == "COM1.mem" && !list[14].origin);
    EXPECT_FALSE(list[11].IsWhole() || list[12].IsWhole());
    EXPECT_EQ(list[10].terminal, "TILL 7");
    EXPECT_EQ(list[10].kind, DumpKind::Device);
    EXPECT_EQ(backups.Read(first).image, image);
}

TEST(Backups, AnImageIsKeptOnceAsLongAsItsLineHasNoNewerOne)
{
    FakeFiles files;
    local_seconds now = local_days(2026y / March / 9) + 7h;
    Backups backups(files, "/b", [&] { return now += 1min; });
    const FlashImage image = ImageOf(WholeChain);
    const FlashImage other = Filled(1);
    const auto keep = [&](int port, std::string_view terminal, const FlashImage& held,
                          std::string_view map = WholeChain) {
        return backups.Keep({port, map, terminal, held});
    };
    const std::string first = keep(1, "TILL 7", image);
    EXPECT_EQ(keep(1, "TILL 7", image), first);
    EXPECT_NE(keep(2, "TILL 7", image), first) << "another line";
    EXPECT_EQ(keep(1, "TILL 7", image), first) << "that line's newest is still the same";
    EXPECT_EQ(files.content.size(), 2U);

    EXPECT_NE(keep(1, "TILL 8", image), first) << "another till";
    EXPECT_NE(keep(1, "TILL 8", image, "\xBF"), first) << "other modules";
    const std::string changed = keep(1, "TILL 7", other);
    EXPECT_NE(keep(1, "TILL 7", image), first) << "no longer the newest";
    EXPECT_EQ(files.content.size(), 6U);

    // One that cannot be trusted is no backup, and one of older days does not say what it is.
    const std::string newest = keep(1, "TILL 7", image);
    const std::string damaged = newest.substr(0, newest.size() - 4) + "_2.mem";
    files.content[damaged] = Spoilt(files.content[newest]);
    files.content["/b/2099-01-01 00-00-00 COM1.mem"] = files.content[newest];
    EXPECT_EQ(keep(1, "TILL 7", image), newest) << "the newest of those that are whole, by today's clock";
    files.content.erase(damaged);
    files.content[newest.substr(0, newest.size() - 4) + ".bak"] = files.content[newest];
    for (const std::string& spoilt : {Spoilt(files.content[newest]), FormatDump(0, image)}) {
        files.content[newest] = spoilt;
        const std::string again = keep(1, "TILL 7", image);
        EXPECT_TRUE(again.ends_with(".mem") && again != newest);
        files.content.erase(again);
    }
    files.unreadable.insert(newest);
    EXPECT_NE(keep(1, "TILL 7", image), newest);
}

}  // namespace
}  // namespace kelvora
