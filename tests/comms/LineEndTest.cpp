// How work on a line ends: what the terminal is told, how long that may take, and what is kept.
#include "comms/LineEnd.h"

#include "comms/Reply.h"
#include "comms/ScanRun.h"
#include "platform/SerialSettings.h"

namespace kelvora {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using Step = LineWarning::Step;

std::vector<Step> StepsOf(const LineWarnings& warnings)
{
    std::vector<Step> steps;
    for (const LineWarning& warning : warnings)
        steps.push_back(warning.step);
    return steps;
}

bench::LineOptions Faulty(const std::vector<bench::CommandFault>& faults, milliseconds stray = {})
{
    return {.faults = {.stray = stray, .commands = faults}};
}

}  // namespace

TEST(LineEnd, AClosingStepThatFailsIsAWarningAndLosesNothing)
{
    const auto check = [&](const char* name, const char* body, const std::vector<Step>& steps) {
        const ScanRun ended = Scan({}, Answers(name, body));
        EXPECT_TRUE(ended.result.IsDone()) << name;
        EXPECT_EQ(ended.result.image.size(), 8192U) << name;
        EXPECT_EQ(StepsOf(ended.result.warnings), steps) << name;
        EXPECT_TRUE(ended.sent.ends_with(" 0FB1 0FB3 $9911 $9904!3 $9904!0")) << name << ended.sent;
    };
    check("none", "", {});
    check("0FB1", "M0FB1!2", {Step::FlashNotClosed});
    check("0FB3", "M0FB3!2", {Step::FlashNotClosed});
    check("$9911", "Rno", {Step::NotReleased});
    check("$9904!3", "M$9904!2", {Step::TransferNotEnded});
    check("$9904!0", "M$9904!0!1", {Step::ModeNotSet});
}

TEST(LineEnd, AReleaseThatIsNotAnsweredIsSentTwice)
{
    const ScanRun ended =
        Scan(Faulty({{bench::CommandFault::Kind::Late, "$9911", 0, seconds(60), ""}}), nullptr);
    EXPECT_TRUE(ended.result.IsDone());
    EXPECT_EQ(StepsOf(ended.result.warnings), std::vector{Step::NotReleased});
    EXPECT_TRUE(ended.sent.ends_with(" 0FB3 $9911 $9911 $9904!3 $9904!0")) << ended.sent;
}

TEST(LineEnd, WhatWasHeldIsReleasedWhateverHasFailed)
{
    const auto check = [&](const char* why, const Preparation& prepare, std::uint32_t number,
                           const char* sent) {
        const ScanRun ended = Scan({}, prepare);
        EXPECT_EQ(ended.result.failure.number, number) << why;
        EXPECT_EQ(ended.sent, sent) << why;
        EXPECT_TRUE(ended.result.warnings.empty()) << why;
        EXPECT_LT(ended.time, seconds(1)) << why;
    };
    check("refused to hold: asked all the same", Answers("$9918", "M$9918!2"), ReplyErrorNumber::Rejected,
          " $9900 $9918 $9911");
    check("not asked to hold: not owed", Answers("$9900", "M$9900!2"), ReplyErrorNumber::Rejected, " $9900");
    check("a status", Answers("$9902", "M$9902!1"), ReplyErrorNumber::NoDevices, " $9900 $9918 $9902 $9911");
    check("the map has come: the mode is owed", Answers("0FB0", "Eno"), ReplyErrorNumber::Failed,
          " $9900 $9918 $9902 000 0FB0 $9911 $9904!0");
}

// A terminal that is there but not in time, or beside the point, still gets its line back.
TEST(LineEnd, AnAnswerThatIsLateOrAnotherOnesEndsTheWaitAndReleases)
{
    using Fault = bench::CommandFault;
    const auto check = [&](const char* why, const bench::LineOptions& options, int timeout,
                           std::uint32_t number, seconds limit) {
        const ScanRun ended = Scan(options, nullptr, {1, "9600,n,8,1", timeout});
        EXPECT_EQ(ended.result.failure.number, number) << why << ended.result.failure.detail;
        EXPECT_FALSE(ended.isHeld) << why << ended.sent;
        EXPECT_LT(ended.time, limit) << why;
    };
    check("after the wait", Faulty({{Fault::Kind::Late, "$9902", 0, milliseconds(1100), ""}}), 1000,
          ReplyErrorNumber::GivenTime, seconds(3));
    check("another command's", Faulty({{Fault::Kind::WrongReply, "$9902", 0, milliseconds(0), ""}}), 0,
          ReplyErrorNumber::Failed, seconds(3));
    check("refused", Faulty({{Fault::Kind::Status, "$9902", 0, milliseconds(0), "7"}}), 0,
          ReplyErrorNumber::Malformed, seconds(1));
    check("late all along, on a line that is never quiet",
          Faulty({{Fault::Kind::Late, "$9902", 0, milliseconds(60000), ""}}, milliseconds(900)), 0,
          ReplyErrorNumber::Failed, seconds(23));
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
            const auto limit = stop + seconds(2) + settings.TimeOf(MaximumBody + FrameOverhead);
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
