// How work on a line ends: what the terminal is told, how long that may take, and what is kept.
#include "comms/LineEnd.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "comms/LineCommands.h"
#include "comms/LineDrivers.h"
#include "comms/LinkFrame.h"
#include "comms/Reply.h"
#include "fakes/BenchLine.h"
#include "platform/SerialSettings.h"

namespace kelvora {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using Step = LineWarning::Step;

constexpr std::size_t BodyAt = 5;

struct Ended {
    LineResult result;
    bool isHeld = false;               ///< by the terminal, at the end
    EventLoop::Time::duration time{};  ///< of all the work
    std::string sent;                  ///< each command as often as it was sent, a blank before each
};

// A scan that leaves the line in POS mode, on a simulated line that `prepare` has made its own.
Ended Scan(const std::function<void(FakeEventLoop&, BenchLine&)>& prepare,
           const LineTarget& target = {1, "9600,n,8,1", 0}, const LineHooks& hooks = {},
           const bench::LineOptions& options = {})
{
    FakeEventLoop loop;
    BenchLine bench(loop, options);
    Ended ended;
    bench.link.watcher = [&](const LineTraffic& traffic) {
        if (traffic.direction == LineTraffic::Direction::Sent)
            ended.sent +=
                " " + std::string(traffic.bytes.substr(BodyAt, traffic.bytes.size() - FrameOverhead));
    };
    Comms comms(loop, {&bench.link, nullptr, nullptr, nullptr});
    prepare(loop, bench);
    ended.result = ScanWithUpload(comms, target, hooks, LineMode::Pos);
    ended.time = loop.Now() - EventLoop::Time();
    // What is still under way when the port is closed reaches nobody.
    ended.isHeld = bench.line.IsHeld();
    EXPECT_FALSE(bench.port.IsOpen());
    return ended;
}

std::function<void(FakeEventLoop&, BenchLine&)> Answers(const char* name, const char* body)
{
    return [=](FakeEventLoop&, BenchLine& bench) { bench.line.Terminal().AnswerNext(name, body); };
}

std::vector<Step> StepsOf(const LineWarnings& warnings)
{
    std::vector<Step> steps;
    for (const LineWarning& warning : warnings)
        steps.push_back(warning.step);
    return steps;
}

bench::LineOptions Faulty(const std::vector<bench::CommandFault>& faults, milliseconds stray = {})
{
    bench::LineOptions options;
    options.faults.commands = faults;
    options.faults.stray = stray;
    return options;
}

const auto nothing = [](FakeEventLoop&, BenchLine&) {};

}  // namespace

TEST(LineEnd, AClosingStepThatFailsIsAWarningAndLosesNothing)
{
    const struct {
        const char* name;
        const char* body;
        std::vector<Step> steps;
    } cases[]{
        {"none", "", {}},
        {"0FB1", "M0FB1!2", {Step::FlashNotClosed}},
        {"0FB3", "M0FB3!2", {Step::FlashNotClosed}},
        {"$9911", "Rno", {Step::NotReleased}},
        {"$9904!3", "M$9904!2", {Step::TransferNotEnded}},
        {"$9904!0", "M$9904!0!1", {Step::ModeNotSet}},
    };
    for (const auto& row : cases) {
        const Ended ended = Scan(Answers(row.name, row.body));
        EXPECT_TRUE(ended.result.IsDone()) << row.name;
        EXPECT_EQ(ended.result.image.size(), 8192U) << row.name;
        EXPECT_EQ(StepsOf(ended.result.warnings), row.steps) << row.name;
        EXPECT_TRUE(ended.sent.ends_with(" 0FB1 0FB3 $9911 $9904!3 $9904!0")) << row.name << ended.sent;
    }
}

TEST(LineEnd, AReleaseThatIsNotAnsweredIsSentTwice)
{
    const Ended ended = Scan(nothing, {1, "9600,n,8,1", 0}, {},
                             Faulty({{bench::CommandFault::Kind::Late, "$9911", 0, seconds(60), ""}}));
    EXPECT_TRUE(ended.result.IsDone());
    EXPECT_EQ(StepsOf(ended.result.warnings), std::vector{Step::NotReleased});
    EXPECT_TRUE(ended.sent.ends_with(" 0FB3 $9911 $9911 $9904!3 $9904!0")) << ended.sent;
}

TEST(LineEnd, WhatWasHeldIsReleasedWhateverHasFailed)
{
    const struct {
        const char* why;
        std::function<void(FakeEventLoop&, BenchLine&)> prepare;
        std::uint32_t number;
        const char* sent;
    } cases[]{
        {"refused to hold: asked all the same", Answers("$9918", "M$9918!2"), ReplyErrorNumber::Rejected,
         " $9900 $9918 $9911"},
        {"not asked to hold: not owed", Answers("$9900", "M$9900!2"), ReplyErrorNumber::Rejected, " $9900"},
        {"a status", Answers("$9902", "M$9902!1"), ReplyErrorNumber::NoDevices, " $9900 $9918 $9902 $9911"},
        {"the map has come: the mode is owed", Answers("0FB0", "Eno"), ReplyErrorNumber::Failed,
         " $9900 $9918 $9902 000 0FB0 $9911 $9904!0"},
    };
    for (const auto& row : cases) {
        const Ended ended = Scan(row.prepare);
        EXPECT_EQ(ended.result.failure.number, row.number) << row.why;
        EXPECT_EQ(ended.sent, row.sent) << row.why;
        EXPECT_TRUE(ended.result.warnings.empty()) << row.why;
        EXPECT_LT(ended.time, seconds(1)) << row.why;
    }
}

// A terminal that is there but not in time, or beside the point, still gets its line back.
TEST(LineEnd, AnAnswerThatIsLateOrAnotherOnesEndsTheWaitAndReleases)
{
    using Fault = bench::CommandFault;
    const struct {
        const char* why;
        bench::LineOptions options;
        int timeout;
        std::uint32_t number;
        seconds limit;
    } cases[]{
        {"after the wait", Faulty({{Fault::Kind::Late, "$9902", 0, milliseconds(1100), ""}}), 1000,
         ReplyErrorNumber::GivenTime, seconds(3)},
        {"another command's", Faulty({{Fault::Kind::WrongReply, "$9902", 0, milliseconds(0), ""}}), 0,
         ReplyErrorNumber::Failed, seconds(3)},
        {"refused", Faulty({{Fault::Kind::Status, "$9902", 0, milliseconds(0), "7"}}), 0,
         ReplyErrorNumber::Malformed, seconds(1)},
        {"late all along, on a line that is never quiet",
         Faulty({{Fault::Kind::Late, "$9902", 0, milliseconds(60000), ""}}, milliseconds(900)), 0,
         ReplyErrorNumber::Failed, seconds(23)},
    };
    for (const auto& row : cases) {
        const Ended ended = Scan(nothing, {1, "9600,n,8,1", row.timeout}, {}, row.options);
        EXPECT_EQ(ended.result.failure.number, row.number) << row.why << ended.result.failure.detail;
        EXPECT_FALSE(ended.isHeld) << row.why << ended.sent;
        EXPECT_LT(ended.time, row.limit) << row.why;
    }
}

// Two seconds and one frame, at any speed, whatever the line does.
TEST(LineEnd, AStopIsOverInTwoSecondsAndAFrame)
{
    bench::LineOptions silent;
    silent.faults.silentAfter.toHost = 1500;
    bench::LineOptions dead = silent;
    dead.faults.silentAfter.toHost = 0;
    const struct {
        const char* why;
        bench::LineOptions options;
        std::size_t bytes;  ///< on the line before the stop
        bool isHeld;
    } cases[]{
        {"a good line", {}, 1700, false},
        {"stray bytes", Faulty({}, milliseconds(900)), 1700, false},
        {"stray bytes and no answer in sight",
         Faulty({{bench::CommandFault::Kind::Late, "20", 0, seconds(100), ""}}, milliseconds(900)), 1700,
         false},
        {"silent in the middle", silent, 1700, true},
        {"never there", dead, 0, false},
    };
    for (const char* text : {"19200,n,8,1", "9600,n,8,1", "1200,n,8,1"})
        for (const auto& row : cases) {
            const SerialSettings settings = ParseSerialSettings(text).value();
            const auto stop = settings.TimeOf(row.bytes) + milliseconds(500);
            bench::LineOptions options = row.options;
            options.terminal = settings;
            const FakeEventLoop* clock = nullptr;
            LineHooks hooks;
            hooks.stopRequested = [&] { return clock->Now() - EventLoop::Time() >= stop; };
            const Ended ended = Scan([&](FakeEventLoop& loop, BenchLine& /*bench*/) { clock = &loop; },
                                     {1, text, 0}, hooks, options);
            const auto limit = stop + seconds(2) + settings.TimeOf(MaximumBody + FrameOverhead);
            EXPECT_EQ(ended.result.outcome, LineOutcome::Stopped) << text << row.why;
            // The clock of a wait ticks ten times a second.
            EXPECT_LE(ended.time, limit + milliseconds(200)) << text << row.why;
            EXPECT_EQ(ended.isHeld, row.isHeld) << text << row.why << ended.sent;
        }
}

}  // namespace kelvora
