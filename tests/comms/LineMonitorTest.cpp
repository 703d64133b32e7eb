#include "comms/LineMonitor.h"

#include <gtest/gtest.h>

#include "comms/FrameMeaning.h"
#include "comms/LinkFrame.h"

using namespace kelvora;
using namespace std::chrono_literals;
using Direction = LineTraffic::Direction;
using Damage = LineTraffic::Damage;

// 31 December 2025, 23:30:05.007 in Greenwich.
constexpr std::chrono::system_clock::time_point Evening =
    std::chrono::sys_days(std::chrono::year(2025) / 12 / 31) + 23h + 30min + 5s + 7ms;

TEST(LineMonitor, ForgetsTheOldestByNumberAndBytesButNeverTheNewest)
{
    LineMonitor monitor;
    int changes = 0;
    monitor.onChange = [&changes] { ++changes; };
    const auto add = [&monitor](std::string_view bytes, std::string_view meaning) {
        monitor.Add(1, {Direction::Sent, Damage::None, bytes}, meaning);
    };
    for (int i = 0; i < 10'003; ++i)
        add("x", std::to_string(i));
    ASSERT_EQ(monitor.Entries().size(), 10'000U);
    EXPECT_EQ(monitor.Entries().front()->meaning, "3");
    EXPECT_EQ(monitor.FirstNumber(), 3U);
    monitor.Clear();
    EXPECT_EQ(monitor.FirstNumber(), 10'003U);
    EXPECT_EQ(changes, 10'004);

    const std::string half(LineMonitor::MaximumBytes / 2 - 1, 'x');
    add(half, "a");
    const auto shown = monitor.Entries().front();
    add(half, "b");
    EXPECT_EQ(monitor.Entries().front()->meaning, "a");
    add("", "c");
    EXPECT_EQ(monitor.Entries().front()->meaning, "b");
    add(half + half + half, "d");
    ASSERT_EQ(monitor.Entries().size(), 1U);
    EXPECT_EQ(shown->bytes.size(), half.size()) << "who shows an entry keeps it";
}

TEST(LineMonitor, TextHasALineAnEntryWhateverTheBytes)
{
    auto now = Evening;
    LineMonitor monitor([&now] { return now; });
    monitor.Add(1, {Direction::Sent, Damage::None, "\x01$9902\x03"}, "command $9902");
    now += 1053ms;
    monitor.Add(2, {Direction::Received, Damage::BadFrame, std::string_view("\x00~\x7F\xE8 ", 5)},
                "a\t\r\nb");
    monitor.Add(4, {Direction::Received, Damage::CutShort, ""}, "");
    monitor.Add(4, {Direction::Received, Damage::Noise, "\xFF"}, "");
    EXPECT_EQ(LineMonitorText(monitor.Entries(), 60min),
              "Time (UTC+01:00)\tPort\tDirection\tDamage\tMeaning\tBytes\tCharacters\r\n"
              "2026-01-01 00:30:05.007\tCOM1\tsent\tgood\tcommand $9902\t01 24 39 39 30 32 03\t.$9902.\r\n"
              "2026-01-01 00:30:06.060\tCOM2\treceived\tbad frame\ta...b\t00 7E 7F E8 20\t.~.. \r\n"
              "2026-01-01 00:30:06.060\tCOM4\treceived\tcut short\t\t\t\r\n"
              "2026-01-01 00:30:06.060\tCOM4\treceived\tnoise\t\tFF\t.\r\n");
    EXPECT_TRUE(LineMonitorText({}, -210min).starts_with("Time (UTC-03:30)\t"));
    EXPECT_TRUE(LineMonitorText({}, 0min).starts_with("Time (UTC+00:00)\t"));
}

TEST(FrameMeaning, SaysWhatAFrameDoes)
{
    const auto check = [&](Direction direction, const std::string& body, const std::string& meaning) {
        const std::string frame = BuildFrame({0x00A1, body});
        EXPECT_EQ(FrameMeaning({direction, Damage::None, frame}), meaning) << body;
        EXPECT_EQ(FrameMeaning({direction, Damage::CutShort, frame}), "");
    };
    check(Direction::Sent, "$9904!3", "command $9904!3");
    check(Direction::Sent, "0FB1", "command 0FB1");
    check(Direction::Sent, "0FB101C0", "command 0FB101C0");
    check(Direction::Sent, "0FB101C0ab\x1B\x41", "command 0FB1, address 01C0, 3 bytes");
    check(Direction::Received, "M$9902!0!6'214,191", "reply $9902, 6, 214,191");
    check(Direction::Received, "M$9902!1", "reply $9902, status 1");
    check(Direction::Received, "M20!0$01A0#abc\"\x1B\x41", "reply 20, address 01A0, 4 bytes");
    check(Direction::Received, "M20!0$01A0#ab\x1B", "reply 20, address 01A0, 0 bytes");
    check(Direction::Received, "M20!0$01A0", "reply 20, 01A0");
    check(Direction::Received, "M20!3", "reply 20, status 3");
    check(Direction::Received, "M0FB3", "reply 0FB3, malformed");
    check(Direction::Received, "M0FB3Z0", "reply 0FB3, malformed");
    check(Direction::Received, "Eno device", "command error: no device");
    check(Direction::Received, "R!2", "command rejected: !2");
    check(Direction::Received, "Z", "");
    check(Direction::Received, "", "");
    EXPECT_EQ(FrameMeaning({Direction::Received, Damage::None, "\x15"}), "came damaged, send again");
}
