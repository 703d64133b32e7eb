// The drivers against the simulated line: whole, noisy, and failing in every way.
#include <gtest/gtest.h>

#include <functional>
#include <optional>

#include "comms/LineDrivers.h"
#include "comms/Reply.h"
#include "fakes/BenchLine.h"

namespace kelvora {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr const char* WholeMap = "\xD6\x17\x04\xBF\x03\x08";

struct ScanRun {
    LineResult result;
    EventLoop::Time::duration time{};
    std::string flash;
};

ScanRun Scan(const bench::LineOptions& options,
             const std::function<void(FakeEventLoop&, BenchLine&)>& prepare = nullptr)
{
    FakeEventLoop loop;
    BenchLine bench(loop, options);
    Comms comms(loop, {&bench.link, nullptr, nullptr, nullptr});
    if (prepare)
        prepare(loop, bench);
    ScanRun run;
    run.result = ScanWithUpload(comms, {1, "9600,n,8,1", 0}, {});
    run.time = loop.Now() - EventLoop::Time();
    run.flash = bench.Flash();
    EXPECT_FALSE(bench.port.IsOpen());
    return run;
}

bench::LineOptions Noisy(std::uint64_t seed)
{
    bench::LineOptions options;
    options.faults.seed = seed;
    options.faults.drop = options.faults.flip = options.faults.duplicate = 1.0 / 3000;
    return options;
}

}  // namespace

TEST(LineSoak, ScansSucceedThroughOneDamagedByteInAThousand)
{
    constexpr std::uint64_t Scans = 40;
    int failed = 0;
    for (std::uint64_t seed = 1; seed <= Scans; ++seed) {
        const ScanRun run = Scan(Noisy(seed));
        if (!run.result.IsDone())
            ++failed;
        else
            EXPECT_TRUE(run.result.image == run.flash && run.result.deviceMap == WholeMap) << seed;
    }
    EXPECT_LE(failed, 1);
}

TEST(LineSoak, EveryFailureIsToldInItsTime)
{
    bench::LineOptions silent;
    silent.faults.silentAfter.toHost = 5000;
    bench::LineOptions away;
    away.faults.awayAfter.toHost = 5000;
    bench::LineOptions slow;
    slow.terminal.baud = 4800;
    const auto restarts = [](FakeEventLoop& loop, BenchLine& bench) {
        loop.After(seconds(4), [&bench] { bench.line.Restart(); });
    };
    const auto answers = [](const char* name, const std::string& body) {
        return [=](FakeEventLoop&, BenchLine& bench) { bench.line.Terminal().AnswerNext(name, body); };
    };
    using enum PortFailure;
    namespace Error = ReplyErrorNumber;
    const struct {
        const char* why;
        bench::LineOptions options;
        std::function<void(FakeEventLoop&, BenchLine&)> prepare;
        std::uint32_t number;
        PortFailure port;
        bool hasMap;
        int seconds;
    } cases[]{
        {"dies in the middle", silent, nullptr, Error::GaveUp, None, true, 12},
        {"the port vanishes", away, nullptr, Error::Failed, Missing, true, 7},
        {"another speed", slow, nullptr, Error::GaveUp, None, false, 4},
        {"a field too many", {}, answers("$9900", "M$9900!0!T!U"), Error::Malformed, None, false, 2},
        {"no number of devices", {}, answers("$9902", "M$9902!0!9#214"), Error::Malformed, None, false, 2},
        {"another size", {}, answers("0FB0", "M0FB0!0$4096"), Error::Failed, None, true, 2},
        {"too short", {}, answers("20", "M20!0$0000"), Error::Malformed, None, true, 2},
        {"too long", {}, answers("20", "M20!0$0000!a!b!c"), Error::Malformed, None, true, 2},
        {"not escaped", {}, answers("20", "M20!0$0000\"a\x1B"), Error::Malformed, None, true, 2},
        {"another block", {}, answers("20", "M20!0$0040!a"), Error::Malformed, None, true, 2},
        {"another CRC", {}, answers("0F02", "M0F02!0(00000000"), Error::Malformed, None, true, 12},
        {"no answer of a terminal", {}, answers("$9918", "X"), Error::Failed, None, false, 2},
        {"command error", {}, answers("$9918", "Ebusy"), Error::Failed, None, false, 2},
        {"rejected", {}, answers("$9918", "Rno"), Error::Rejected, None, false, 2},
        {"restarted, as after a suspension", {}, restarts, Error::Rejected, None, true, 7},
    };
    for (const auto& row : cases) {
        const ScanRun run = Scan(row.options, row.prepare);
        EXPECT_EQ(run.result.outcome, LineOutcome::Failed) << row.why;
        EXPECT_EQ(run.result.failure.number, row.number) << row.why << ": " << run.result.failure.detail;
        EXPECT_EQ(run.result.failure.port, row.port) << row.why;
        EXPECT_EQ(!run.result.deviceMap.empty(), row.hasMap) << row.why;
        EXPECT_EQ(run.result.image, "") << row.why;
        EXPECT_LT(run.time, seconds(row.seconds)) << row.why;
    }
}

// A NAK is a sign of life: the silences before it count no more, not even at the last send.
TEST(LineSoak, OnlySilencesInARowAreATimeOut)
{
    struct Case {
        int naks;  ///< each of them before the line falls silent for good
        milliseconds between;
        LinkEvent event;
        milliseconds end;
    };
    for (const auto& row : {Case{1, milliseconds(2500), LinkEvent::TimeOut, milliseconds(5500)},
                            Case{11, milliseconds(500), LinkEvent::CommunicationError, milliseconds(6500)}}) {
        bench::LineOptions dead;
        dead.faults.silentAfter.toHost = 0;
        FakeEventLoop loop;
        BenchLine bench(loop, dead);
        std::optional<LinkEvent> ended;
        EventLoop::Time::duration time{};
        bench.link.onEvent = [&](LinkEvent event, std::string_view) {
            ended = event;
            time = loop.Now() - EventLoop::Time();
        };
        ASSERT_TRUE(bench.link.Open("9600,n,8,1"));
        bench.link.Send("$9900", LnkControl::UsualSends);
        for (int nak = 1; nak <= row.naks; ++nak)
            loop.After(nak * row.between, [&] { bench.line.onBytes("\x15"); });
        loop.Pass(seconds(10));
        EXPECT_EQ(ended, row.event) << row.naks;
        EXPECT_GE(time, row.end) << row.naks;
    }
}

// Nothing but noise, which never falls silent and never makes a frame.
TEST(LineSoak, EndlessGarbageEndsAtTheLimit)
{
    struct Babble {
        FakeEventLoop& loop;
        BenchLine& bench;
        void operator()() const
        {
            if (bench.port.IsOpen())
                bench.line.onBytes("\x01U\n");
            loop.After(milliseconds(50), *this);
        }
    };
    bench::LineOptions dead;
    dead.faults.silentAfter.toHost = 0;
    FakeEventLoop loop;
    BenchLine bench(loop, dead);
    Comms comms(loop, {&bench.link, nullptr, nullptr, nullptr});
    Babble{loop, bench}();
    EXPECT_EQ(ScanWithUpload(comms, {1, "9600,n,8,1", 0}, {}).failure.number, ReplyErrorNumber::Failed);
    EXPECT_LT(loop.Now() - EventLoop::Time(), seconds(40));
    const EventLoop::Time before = loop.Now();
    EXPECT_EQ(ScanWithUpload(comms, {1, "9600,n,8,1", 3000}, {}).failure.number, ReplyErrorNumber::GivenTime);
    EXPECT_LT(loop.Now() - before, seconds(4));
}

}  // namespace kelvora
