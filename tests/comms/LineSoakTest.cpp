// The drivers against the simulated line: whole, noisy, and failing in every way.
#include "comms/LinkFrame.h"
#include "comms/Reply.h"
#include "comms/ScanRun.h"

namespace kelvora {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr const char* WholeMap = "\xD6\x17\x04\xBF\x03\x08";

const bench::LineOptions Dead{.faults = {.silentAfter = {.toHost = 0}}};

TEST(LineSoak, ScansSucceedThroughOneDamagedByteInAThousand)
{
    constexpr std::uint64_t Scans = 40;
    int failed = 0;
    for (std::uint64_t seed = 1; seed <= Scans; ++seed) {
        constexpr double Rare = 1.0 / 3000;
        const ScanRun run =
            Scan({.faults = {.seed = seed, .drop = Rare, .flip = Rare, .duplicate = Rare}}, nullptr);
        if (!run.result.IsDone())
            ++failed;
        else
            EXPECT_TRUE(run.result.image == run.flash && run.result.deviceMap == WholeMap) << seed;
    }
    EXPECT_LE(failed, 1);
}

TEST(LineSoak, EveryFailureIsToldInItsTime)
{
    const bench::LineOptions silent{.faults = {.silentAfter = {.toHost = 5000}}};
    const bench::LineOptions away{.faults = {.awayAfter = {.toHost = 5000}}};
    const bench::LineOptions slow{.terminal = {.baud = 4800}};
    const auto restarts = [](FakeEventLoop& loop, BenchLine& bench) {
        loop.After(seconds(4), [&bench] { bench.line.Restart(); });
    };
    using enum PortFailure;
    namespace Error = ReplyErrorNumber;
    const auto check = [&](const char* why, const bench::LineOptions& options, const Preparation& prepare,
                           std::uint32_t number, PortFailure port, bool hasMap, int limit,
                           const char* said = "") {
        const ScanRun run = Scan(options, prepare);
        EXPECT_EQ(run.result.outcome, LineOutcome::Failed) << why;
        EXPECT_EQ(run.result.failure.number, number) << why << ": " << run.result.failure.detail;
        EXPECT_TRUE(run.result.failure.detail.ends_with(said)) << why << run.result.failure.detail;
        EXPECT_EQ(run.result.failure.port, port) << why;
        EXPECT_EQ(!run.result.deviceMap.empty(), hasMap) << why;
        EXPECT_EQ(run.result.image, "") << why;
        EXPECT_LT(run.time, seconds(limit)) << why;
    };
    check("dies in the middle", silent, nullptr, Error::GaveUp, None, true, 13);
    check("the port vanishes", away, nullptr, Error::Failed, Missing, true, 7);
    check("another speed", slow, nullptr, Error::GaveUp, None, false, 4);
    check("a field too many", {}, Answers("$9900", "M$9900!0!T!U"), Error::Malformed, None, false, 2);
    check("no number of devices", {}, Answers("$9902", "M$9902!0!9#214"), Error::Malformed, None, false, 2);
    check("another size", {}, Answers("0FB0", "M0FB0!0$4096"), Error::Failed, None, true, 2);
    check("too short", {}, Answers("20", "M20!0$0000"), Error::Malformed, None, true, 2);
    check("too long", {}, Answers("20", "M20!0$0000!a!b!c"), Error::Malformed, None, true, 2);
    check("not escaped", {}, Answers("20", "M20!0$0000\"a\x1B"), Error::Malformed, None, true, 2);
    check("another block", {}, Answers("20", "M20!0$0040!a"), Error::Malformed, None, true, 2);
    check("another CRC", {}, Answers("0F02", "M0F02!0(00000000"), Error::Malformed, None, true, 12);
    check("no answer of a terminal", {}, Answers("$9918", "X"), Error::Failed, None, false, 2);
    check("command error", {}, Answers("$9918", "Ebusy"), Error::Failed, None, false, 2, ": busy");
    check("rejected", {}, Answers("$9918", "Rno"), Error::Rejected, None, false, 2, ": no");
    check("restarted, as after a suspension", {}, restarts, Error::Rejected, None, true, 7);
}

// A NAK is a sign of life: the silences before it count no more, not even at the last send.
TEST(LineSoak, OnlySilencesInARowAreATimeOut)
{
    const auto check = [&](int naks, milliseconds between, LinkEvent expected, milliseconds end) {
        FakeEventLoop loop;
        BenchLine bench(loop, Dead);
        std::optional<LinkEvent> ended;
        EventLoop::Time::duration time{};
        bench.link.onEvent = [&](LinkEvent event, std::string_view) {
            ended = event;
            time = loop.Now() - EventLoop::Time();
        };
        std::string sent;
        bench.link.watcher = [&sent](const LineTraffic& traffic) {
            EXPECT_EQ(traffic.damage, LineTraffic::Damage::None);
            if (sent.empty())
                sent = traffic.bytes;
        };
        ASSERT_TRUE(bench.link.Open("9600,n,8,1"));
        bench.link.Send("$9900", LnkControl::UsualSends);
        // Under another number it is the answer to an earlier command.
        const auto other = static_cast<std::uint16_t>(std::stoul(sent.substr(1, 4), nullptr, 16) ^ 1U);
        loop.After(milliseconds(100), [&] { bench.line.onBytes(BuildFrame({other, "M$9900!0!TILL"})); });
        for (int nak = 1; nak <= naks; ++nak)
            loop.After(nak * between, [&] { bench.line.onBytes("\x15"); });
        loop.Pass(seconds(10));
        EXPECT_EQ(ended, expected) << naks;
        EXPECT_GE(time, end) << naks;
    };
    check(1, milliseconds(2500), LinkEvent::TimeOut, milliseconds(5500));
    check(11, milliseconds(500), LinkEvent::CommunicationError, milliseconds(6500));
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
    FakeEventLoop loop;
    BenchLine bench(loop, Dead);
    Comms comms(loop, {&bench.link, nullptr, nullptr, nullptr});
    Babble{loop, bench}();
    EXPECT_EQ(ScanWithUpload(comms, {1, "9600,n,8,1", 0}, {}).failure.number, ReplyErrorNumber::Failed);
    EXPECT_LT(loop.Now() - EventLoop::Time(), seconds(40));
    const EventLoop::Time before = loop.Now();
    EXPECT_EQ(ScanWithUpload(comms, {1, "9600,n,8,1", 3000}, {}).failure.number, ReplyErrorNumber::GivenTime);
    EXPECT_LT(loop.Now() - before, seconds(4));
}

}  // namespace kelvora
