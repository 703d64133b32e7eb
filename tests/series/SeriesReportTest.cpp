// What a series leaves: its report, its sounds, and the events that are read back.
#include "series/SeriesReport.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "comms/Crc.h"
#include "platform/posix/PosixFiles.h"
#include "series/VerdictSound.h"

namespace kelvora {

using testing::HasSubstr;
using Kind = SeriesEvent::Kind;

TEST(SeriesReport, HasARowForEachTill)
{
    SeriesEvent till{.kind = Kind::Result};
    till.entry.file = "/shop/till.dat";
    till.entry.backup = "/backups/kept@.mem";
    const auto sheets = [&](std::size_t tills) {
        return ReportSheets(SeriesResults(tills, till), "2026-03-09", MessageCatalogue());
    };
    std::size_t room = 1;
    while (sheets(room + 1).size() == 1)
        ++room;
    EXPECT_EQ(room, 14U);
    const std::vector<std::string> two = sheets(room + 1);
    EXPECT_EQ(std::ranges::count(two.at(0), '@'), 14);
    EXPECT_EQ(std::ranges::count(two.at(1), '@'), 1);
    EXPECT_THAT(two.at(1),
                HasSubstr("y=\"16049\" font-size=\"170\" fill=\"#444444\" font-family=\"sans-serif\" "
                          "text-anchor=\"end\">Page 2/2<"));
    EXPECT_EQ(sheets(0).size(), 1U);

    // As it was looked at.
    till.line = till.entry.line = 2;
    till.entry.time = "2026-03-09T07:05:00+01:00";
    till.entry.terminal = "TILL 07";
    till.entry.modules = "KM096, KM064, MCR, ICCR";
    till.entry.result = JournalEntry::Result::Stopped;
    till.changes.assign(6, "fiscal keyboard: no, was yes");
    SeriesResults three(3, till);
    three[0].entry.result = JournalEntry::Result::Done;
    three[1].entry.result = JournalEntry::Result::Failed;
    const std::string sheet = ReportSheets(three, "2026-03-09", MessageCatalogue()).at(0);
    EXPECT_EQ(sheet, PosixFiles().Read(KELVORA_SERIES_TESTS "/report.svg"));
}

TEST(VerdictSound, IsAFileOfSamples)
{
    using namespace std::string_literals;
    const std::string passed = VerdictSound(true);
    EXPECT_EQ(
        passed.substr(0, 44),
        "RIFF\x6E\x3C\0\0WAVEfmt \x10\0\0\0\1\0\1\0\x22\x56\0\0\x44\xAC\0\0\2\0\x10\0data\x4A\x3C\0\0"s);
    EXPECT_EQ(passed.size(), 15478U);
    EXPECT_EQ(VerdictSound(false).size(), 55166U);
    // As they were listened to.
    EXPECT_EQ(Crc32(passed), 1089185116U);
    EXPECT_EQ(Crc32(VerdictSound(false)), 4108286723U);
}

TEST(SeriesEvent, IsTheSameWhenItIsReadBack)
{
    SeriesEvent result{.kind = Kind::Result, .line = 3, .terminal = "TILL", .changes = {"a", "b \"c\""}};
    result.entry.time = "2026-03-09T07:05:00+01:00";
    result.entry.line = 3;
    result.entry.terminal = "TILL";
    result.entry.result = JournalEntry::Result::Done;
    for (const SeriesEvent& event :
         {SeriesEvent{.kind = Kind::Waiting, .line = 2}, SeriesEvent{.kind = Kind::NoPort, .message = "gone"},
          SeriesEvent{.kind = Kind::Found, .terminal = "TILL"},
          SeriesEvent{.kind = Kind::Progress, .done = 5, .total = 9}, result,
          SeriesEvent{.kind = Kind::End, .line = 4, .counts = {1, 2, 3, 4}}}) {
        SeriesEvent read;
        ASSERT_TRUE(ReadSeriesLine(SeriesLine(event), read)) << SeriesLine(event);
        EXPECT_EQ(read, event);
    }
    for (const char* line :
         {"", "{}", "[1]", R"({"event":"waiting","port":"COM5"})", R"({"event":"result","port":"COM1"})",
          R"({"event":"dance","port":"COM1"})", R"({"event":"waiting")"}) {
        SeriesEvent read;
        EXPECT_FALSE(ReadSeriesLine(line, read)) << line;
    }
}

}  // namespace kelvora
