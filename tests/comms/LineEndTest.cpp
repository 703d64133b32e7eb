// How work on a line ends: what the terminal is told, how long that may take, and what is kept.
#include "comms/LineEnd.h"

#include "comms/LineErrorText.h"
#include "comms/Reply.h"
#include "comms/ScanRun.h"
#include "platform/SerialSettings.h"

namespace kelvora {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

bench::LineOptions Faulty(const std::vector<bench::CommandFault>& faults, milliseconds stray = {})
{
    return {.faults = {.stray = stray, .commands = faults}};
}

}  // namespace

// A terminal that is there but not in time, or beside the point, still gets its line back. One that is silent
// is told so twice.
TEST(LineEnd, WhatWasHeldIsReleasedAndWhatWasReadIsKeptWhateverHasFailed)
{
    using Kind = bench::CommandFault::Kind;
    namespace Error = ReplyErrorNumber;
    const auto check = [](const char* why, const ScanRun& ended, std::uint32_t number, const char* sent,
                          int limit, const MessageId& warning = {}) {
        EXPECT_EQ(ended.result.failure.number, number) << why << ended.result.failure.detail;
        EXPECT_TRUE(ended.sent.ends_with(sent)) << why << ended.sent;
        EXPECT_EQ(ended.result.image.size(), number == 0 ? 8192U : 0U) << why;
        const auto told = WarningLines({}, ended.result.warnings);
        ASSERT_EQ(told.size(), warning.text.empty() ? 0U : 1U) << why;
        EXPECT_TRUE(told.empty() || told[0].starts_with(warning.text)) << why;
        EXPECT_FALSE(ended.isHeld && told.empty()) << why;
        EXPECT_LT(ended.time, seconds(limit)) << why;
    };
    const auto late = [](const char* command, milliseconds time, milliseconds stray = {}) {
        return Faulty({{Kind::Late, command, 0, time, ""}}, stray);
    };
    const auto closing = [&](const char* name, const char* body, const MessageId& warning) {
        check(name, Scan({}, Answers(name, body)), 0, " 0FB1 0FB3 $9911 $9904!3 $9904!0", 20, warning);
    };
    closing("none", "", {});
    closing("0FB1", "M0FB1!2", Message::WarnFlashNotClosed);
    closing("0FB3", "M0FB3!2", Message::WarnFlashNotClosed);
    closing("$9911", "Rno", Message::WarnNotReleased);
    closing("$9904!3", "M$9904!2", Message::WarnTransferNotEnded);
    closing("$9904!0", "M$9904!0!1", Message::ModeNotSet);
    check("refused to hold: asked all the same", Scan({}, Answers("$9918", "M$9918!2")), Error::Rejected,
          " $9900 $9918 $9911", 1);
    check("not asked to hold: not owed", Scan({}, Answers("$9900", "M$9900!2")), Error::Rejected, " $9900",
          1);
    check("a status", Scan({}, Answers("$9902", "M$9902!1")), Error::NoDevices, " $9900 $9918 $9902 $9911",
          1);
    check("the map has come: the mode is owed", Scan({}, Answers("0FB0", "Eno")), Error::Failed,
          " $9900 $9918 $9902 000 0FB0 $9911 $9904!0", 1);
    check("after the wait", Scan(late("$9902", milliseconds(1100)), nullptr, {1, "9600,n,8,1", 1000}),
          Error::GivenTime, " $9902 $9911", 3);
    check("another command's", Scan(Faulty({{Kind::WrongReply, "$9902"}}), nullptr), Error::Failed,
          " $9902 $9911", 3);
    check("late all along, on a line that is never quiet",
          Scan(late("$9902", seconds(60), milliseconds(900)), nullptr), Error::Failed, " $9902 $9911", 23);
    check("not released", Scan(late("$9911", seconds(60)), nullptr), 0, " 0FB3 $9911 $9911 $9904!3 $9904!0",
          20, Message::WarnNotReleased);
    bench::LineOptions silent = Faulty({{Kind::Silent, "$9918"}});
    silent.terminal.baud = 1200;
    check("silent from then on, at a speed at which frames take long",
          Scan(silent, nullptr, {1, "1200,n,8,1", 0}), Error::GaveUp, "$9900 $9918 $9918 $9918 $9911 $9911",
          30, Message::WarnNotReleased);
}

// Two seconds and one frame, at any speed, whatever the line does.
TEST(LineEnd, AStopIsOverInTwoSecondsAndAFrame)
{
    const bench::LineOptions silent{.faults = {.silentAfter = {.toHost = 1500}}};
    const bench::LineOptions dead{.faults = {.silentAfter = {.toHost = 0}}};
    // The stop comes when so many bytes have been on the line, and a little later.
    const auto check = [&](const char* why, bench::LineOptions options, std::size_t bytes, bool isHeld) {
        for (const char* text : {"19200,n,8,1", "9600,n,8,1", "1200,n,8,1"}) {
            const SerialSettings settings = ParseSerialSettings(text).value();
            const auto stop = settings.TimeOf(bytes) + milliseconds(500);
            options.terminal = settings;
            const FakeEventLoop* clock = nullptr;
            LineHooks hooks;
            hooks.stopRequested = [&] { return clock->Now() - EventLoop::Time() >= stop; };
            const ScanRun ended = Scan(
                options, [&](FakeEventLoop& loop, BenchLine&) { clock = &loop; }, {1, text, 0}, hooks);
            const auto limit = stop + seconds(2) + settings.TimeOf(LongestFrame);
            EXPECT_EQ(ended.result.outcome, LineOutcome::Stopped) << text << why;
            // The clock of a wait ticks ten times a second.
            EXPECT_LE(ended.time, limit + milliseconds(200)) << text << why;
            EXPECT_EQ(ended.isHeld, isHeld) << text << why << ended.sent;
        }
    };
    check("a good line", {}, 1700, false);
    check("stray bytes", Faulty({}, milliseconds(900)), 1700, false);
    check("stray bytes and no answer in sight",
          Faulty({{bench::CommandFault::Kind::Late, "20", 0, seconds(100), ""}}, milliseconds(900)), 1700,
          false);
    check("silent in the middle", silent, 1700, true);
    check("never there", dead, 0, false);
}

}  // namespace kelvora
