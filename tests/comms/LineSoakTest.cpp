// The drivers against the simulated line: whole, noisy, and failing in every way.
#include "comms/LinkFrame.h"
#include "comms/Reply.h"
#include "comms/ScanRun.h"
#include "platform/NumberText.h"

namespace kelvora {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr const char* WholeMap = "\xD6\x17\x04\xBF\x03\x08";

const bench::LineOptions Dead{.faults = {.silentAfter = {.toHost = 0}}};

TEST(LineSoak, ScansSucceedThroughOneDamagedByteInAThousand)
{
    int failed = 0;
    for (std::uint64_t seed = 1; seed <= 40; ++seed) {
        constexpr double Rare = 1.0 / 3000;
        const ScanRun run =
            Scan({.faults = {.seed = seed, .drop = Rare, .flip = Rare, .duplicate = Rare}}, nullptr);
        if (run.result.IsDone())
            EXPECT_TRUE(run.result.image == run.flash && run.result.deviceMap == WholeMap) << seed;
        else
            ++failed;
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
    check("and of the map", {}, Answers("$9902", "M$9902!0!1#214!x"), Error::Malformed, None, false, 2);
    check("another size", {}, Answers("0FB0", "M0FB0!0$4096"), Error::Failed, None, true, 2);
    check("too short", {}, Answers("20", "M20!0$0000"), Error::Malformed, None, true, 2);
    check("too long", {}, Answers("20", "M20!0$0000!a!b!c"), Error::Malformed, None, true, 2, "of fields");
    check("not escaped", {}, Answers("20", "M20!0$0000\"a\x1B"), Error::Malformed, None, true, 2);
    check("another block", {}, Answers("20", "M20!0$0040!a"), Error::Malformed, None, true, 2);
    check("another CRC", {}, Answers("0F02", "M0F02!0(00000000"), Error::Malformed, None, true, 12);
    check("no CRC", {}, Answers("0F02", "M0F02!0$ABCD"), Error::Malformed, None, true, 12, ": no CRC");
    check("no answer of a terminal", {}, Answers("$9918", "X"), Error::Failed, None, false, 2);
    check("command error", {}, Answers("$9918", "Ebusy"), Error::Failed, None, false, 2, ": busy");
    check("rejected", {}, Answers("$9918", "Rno"), Error::Rejected, None, false, 2, ": no");
    check("restarted, as after a suspension", {}, restarts, Error::Rejected, None, true, 7, "20: status 2");
}

TEST(LineSoak, ACommandEndsByWhatComesInPlaceOfItsAnswer)
{
    // `comes` is bytes, but for "o", another command's reply under the number of this one, and "e", the
    // answer to an earlier one. Each letter of `traffic` is a frame that was sent, "+" under the next number
    // and "s" under the same, or what was told of as good, broken, cut short or noise.
    const auto check = [&](const char* why, int mostSends, const std::string& comes, microseconds between,
                           LinkEvent expected, const std::string& traffic, milliseconds end) {
        std::string seen;
        std::uint16_t number = 0;
        FakeEventLoop loop;
        BenchLine bench(loop, Dead);
        std::optional<LinkEvent> ended;
        EventLoop::Time::duration time{};
        bench.link.onEvent = [&](LinkEvent event, std::string_view) {
            ended = event;
            time = loop.Now() - EventLoop::Time();
        };
        const auto after = [&](int steps) { return static_cast<std::uint16_t>(number + steps); };
        bench.link.watcher = [&](const LineTraffic& told) {
            if (told.direction == LineTraffic::Direction::Received) {
                seen += "gbcn"[static_cast<std::size_t>(told.damage)];
                return;
            }
            const auto sent = WholeNumber<std::uint16_t>(told.bytes.substr(1, 4), 16);
            seen += sent == number ? 's' : sent == after(1) ? '+' : '?';
            number = sent.value();
        };
        ASSERT_TRUE(bench.link.Open("9600,n,8,1"));
        bench.link.Send("000", mostSends);
        seen.clear();
        bench.link.Send("$9900", mostSends);
        for (std::size_t i = 0; i < comes.size(); ++i)
            loop.AfterMicroseconds((i + 1) * between, [&, c = comes[i]] {
                bench.line.onBytes(c == 'o'   ? BuildFrame({number, "M20!0"})
                                   : c == 'e' ? BuildFrame({after(-1), "M$9900!0"})
                                              : std::string(1, c));
            });
        loop.Pass(seconds(30));
        EXPECT_EQ(ended, expected) << why;
        EXPECT_EQ(seen, traffic) << why;
        EXPECT_EQ(std::chrono::round<milliseconds>(time), end) << why;
    };
    using enum LinkEvent;
    check("a NAK is a sign of life", 12, "\x15", milliseconds(2500), TimeOut, "+ssgsss", milliseconds(5548));
    check("at the last send too", 12, std::string(11, '\x15'), milliseconds(500), CommunicationError,
          "+gsgsgsgsgsgsgsgsgsgsgs", milliseconds(6516));
    check("one that comes before the command has left does not mean it", 12, "\x15", milliseconds(20),
          TimeOut, "+gsss", milliseconds(4078));
    check("but right after", 12, "\x15", microseconds(29167), TimeOut, "+gsss", milliseconds(3077));
    check("so does an answer to an earlier command", 12, "e", milliseconds(500), TimeOut, "+gsss",
          milliseconds(4548));
    check("the terminal repeats what it has said to another program", 12, "oo", milliseconds(500), TimeOut,
          "+g+gsss", milliseconds(4048));
    check("noise puts the next send off", 12, "U", milliseconds(500), TimeOut, "+nsss", milliseconds(4548));
    check("not for ever", 12, std::string(2000, 'U'), milliseconds(10), CommunicationError,
          "+nsnsnsnsnsnsnsnsnsnsnsn", milliseconds(18733));
    check("not where time is short", 1, "U", milliseconds(500), CommunicationError, "+n", milliseconds(1030));
    check("what may be an answer does there", 1, "\1U", milliseconds(500), CommunicationError, "+c",
          milliseconds(1573));
}

}  // namespace kelvora
