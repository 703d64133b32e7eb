// The drivers against the simulated line: whole, noisy, and failing in every way.
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <memory>
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

ScanRun Scan(const bench::LineOptions& options, const std::string& settings = "9600,n,8,1",
             const std::function<void(FakeEventLoop&, BenchLine&)>& prepare = nullptr, int timeout = 0)
{
    FakeEventLoop loop;
    BenchLine bench(loop, options);
    Comms comms(loop, {&bench.link, nullptr, nullptr, nullptr});
    if (prepare)
        prepare(loop, bench);
    ScanRun run;
    run.result = ScanWithUpload(comms, {1, settings, timeout}, {});
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

TEST(LineSoak, AWholeLineIsScannedAtAnySpeed)
{
    for (const char* settings : {"19200,n,8,1", "9600,n,8,1", "1200,e,8,2"}) {
        bench::LineOptions options;
        options.terminal = *ParseSerialSettings(settings);
        const ScanRun run = Scan(options, settings);
        ASSERT_TRUE(run.result.IsDone()) << settings << run.result.failure.detail;
        EXPECT_EQ(run.result.deviceMap, WholeMap);
        EXPECT_EQ(run.result.image, run.flash);
    }
}

TEST(LineSoak, ScansSucceedThroughOneDamagedByteInAThousand)
{
    constexpr std::uint64_t Scans = 500;
    constexpr int MostFailed = 1;
    int failed = 0;
    for (std::uint64_t seed = 1; seed <= Scans; ++seed) {
        const ScanRun run = Scan(Noisy(seed));
        if (!run.result.IsDone())
            ++failed;
        else
            EXPECT_TRUE(run.result.image == run.flash && run.result.deviceMap == WholeMap) << seed;
    }
    EXPECT_LE(failed, MostFailed);
}

TEST(LineSoak, EveryFailureIsToldInItsTime)
{
    const auto cut = [](std::uint64_t bytes) { return bench::LineCut{std::nullopt, bytes}; };
    bench::LineOptions whole;
    bench::LineOptions silent = whole;
    silent.faults.silentAfter = cut(5000);
    bench::LineOptions away = whole;
    away.faults.awayAfter = cut(5000);
    bench::LineOptions slow = whole;
    slow.terminal.baud = 4800;
    const auto answers = [](const char* name, const std::string& body) {
        return [=](FakeEventLoop&, BenchLine& bench) { bench.line.Terminal().AnswerNext(name, body); };
    };
    const struct {
        const char* why;
        bench::LineOptions options;
        std::function<void(FakeEventLoop&, BenchLine&)> prepare;
        std::uint32_t number;
        PortFailure port;
        bool hasMap;
        seconds limit;
    } cases[]{
        {"dies in the middle", silent, nullptr, ReplyErrorNumber::GaveUp, PortFailure::None, true,
         seconds(12)},
        {"the port vanishes", away, nullptr, ReplyErrorNumber::Failed, PortFailure::Missing, true,
         seconds(7)},
        {"another speed", slow, nullptr, ReplyErrorNumber::GaveUp, PortFailure::None, false, seconds(4)},
        {"no number of devices", whole, answers("$9902", "M$9902!0!9#214"), ReplyErrorNumber::Malformed,
         PortFailure::None, false, seconds(2)},
        {"too short", whole, answers("20", "M20!0$0000"), ReplyErrorNumber::Malformed, PortFailure::None,
         true, seconds(2)},
        {"too long", whole, answers("20", "M20!0$0000!a!b!c"), ReplyErrorNumber::Malformed, PortFailure::None,
         true, seconds(2)},
        {"not escaped", whole, answers("20", "M20!0$0000\"a\x1B"), ReplyErrorNumber::Malformed,
         PortFailure::None, true, seconds(2)},
        {"another block", whole, answers("20", "M20!0$0040!a"), ReplyErrorNumber::Malformed,
         PortFailure::None, true, seconds(2)},
        {"another CRC", whole, answers("0F02", "M0F02!0(00000000"), ReplyErrorNumber::Malformed,
         PortFailure::None, true, seconds(12)},
        {"no answer of a terminal", whole, answers("$9918", "X"), ReplyErrorNumber::Failed, PortFailure::None,
         false, seconds(2)},
        {"command error", whole, answers("$9918", "Ebusy"), ReplyErrorNumber::Failed, PortFailure::None,
         false, seconds(2)},
        {"rejected", whole, answers("$9918", "Rno"), ReplyErrorNumber::Rejected, PortFailure::None, false,
         seconds(2)},
        {"restarted, as after a suspension", whole,
         [](FakeEventLoop& loop, BenchLine& bench) {
             loop.After(seconds(4), [&bench] { bench.line.Restart(); });
         },
         ReplyErrorNumber::Rejected, PortFailure::None, true, seconds(7)},
    };
    for (const auto& row : cases) {
        const ScanRun run = Scan(row.options, "9600,n,8,1", row.prepare);
        EXPECT_EQ(run.result.outcome, LineOutcome::Failed) << row.why;
        EXPECT_EQ(run.result.failure.number, row.number) << row.why << ": " << run.result.failure.detail;
        EXPECT_EQ(run.result.failure.port, row.port) << row.why;
        EXPECT_EQ(!run.result.deviceMap.empty(), row.hasMap) << row.why;
        EXPECT_EQ(run.result.image, "") << row.why;
        EXPECT_LT(run.time, row.limit) << row.why;
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
        SerialPort& port;
        std::string& input;
        void operator()() const
        {
            input += "\x01U\n";
            port.onBytes();
            loop.After(milliseconds(50), *this);
        }
    };
    class BabblingPort final : public SerialPort {
    public:
        const std::string& Device() const override { return input; }
        void SetDevice(std::string) override {}
        bool Open() override { return isOpen = true; }
        void Close() override { isOpen = false; }
        bool IsOpen() const override { return isOpen; }
        PortFailure Failure() const override { return PortFailure::None; }
        std::string LastError() const override { return {}; }
        bool SetSettings(std::string_view) override { return true; }
        const std::string& Settings() const override { return input; }
        void Write(std::string_view) override {}
        std::size_t BytesWaiting() const override { return input.size(); }
        std::string Read(std::size_t) override { return std::exchange(input, {}); }
        void DiscardInput() override {}
        std::string input;
        bool isOpen = false;
    };
    FakeEventLoop loop;
    BabblingPort port;
    SerialLink link(port, loop);
    Comms comms(loop, {&link, nullptr, nullptr, nullptr});
    Babble{loop, port, port.input}();
    EXPECT_EQ(ScanWithUpload(comms, {1, "9600,n,8,1", 0}, {}).failure.number, ReplyErrorNumber::Failed);
    EXPECT_LT(loop.Now() - EventLoop::Time(), seconds(40));
    const EventLoop::Time before = loop.Now();
    EXPECT_EQ(ScanWithUpload(comms, {1, "9600,n,8,1", 3000}, {}).failure.number, ReplyErrorNumber::GivenTime);
    EXPECT_LT(loop.Now() - before, seconds(4));
    EXPECT_FALSE(port.isOpen);
}

}  // namespace kelvora
