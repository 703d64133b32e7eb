#include "comms/Comms.h"

#include <gmock/gmock.h>

#include "comms/LineCommands.h"
#include "comms/LineDrivers.h"
#include "comms/Reply.h"
#include "comms/RunningOperation.h"
#include "fakes/BenchLine.h"

namespace kelvora {

using std::chrono::milliseconds;
using testing::AllOf;
using testing::Property;
using testing::Throws;

class CommsTest : public testing::Test {
protected:
    auto Elapsed() const { return std::chrono::duration_cast<milliseconds>(loop.Now() - EventLoop::Time()); }

    FakeEventLoop loop;
    BenchLine bench{loop};
    SerialLink& control = bench.link;
    Comms comms{loop, {&control, nullptr, nullptr, &control}};
};

TEST_F(CommsTest, WaitReplyJudgesEachLineOfTheMailbox)
{
    const auto check = [&](const char* why, const char* mailbox, const char* prefix, const char* reply,
                           const char* left) {
        control.Text = mailbox;
        EXPECT_EQ(comms.WaitReply(1, prefix, 0), reply) << why;
        EXPECT_EQ(control.Text, left) << why;
        EXPECT_FALSE(comms.Clock(1).Enabled()) << why;
    };
    check("any line without a prefix", "\247zfirst\r\nnext\r\n", "", "\247zfirst", "next\r\n");
    check("the answer loses its tag", "\247m$9900!0%POS-7\r\n", "$9900", "$9900!0%POS-7", "");
    check("another's reply is skipped", "\247m20!0\r\n\247m$9900!0\r\nrest", "$9900", "$9900!0", "rest");
    check("unknown tags are skipped", "\247z$9900\r\nnoise\r\n\247m$9900!0\r\n", "$9900", "$9900!0", "");
    check("status 999", "\247m0FB0#999!1\r\n", "0FB0", "\247l0FB0#999!1", "");
    check("status 2", "\247m0FB0!2\r\n", "0FB0", "\247r0FB0!2", "");
    check("status 3", "\247m0FB0!3\r\n", "0FB0", "\247s0FB0!3", "");
    check("status 5", "\247m0FB0!5\r\n", "0FB0", "\247i0FB0!5", "");
    check("a long count", "\247m20!0$12\r\n", "20", "\247xa field of the reply to 20 runs past its end", "");
    for (const std::string failure : {"\247ewhy", "\247r", "\247c", "\247t", "\247u"})
        check("a failure", (failure + "\r\nrest\r\n").c_str(), "$9900", failure.c_str(), "rest\r\n");
    check("other tags do not end the wait", "\247w\r\n\247x\r\n\247l\r\n\247u\r\n", "$9900", "\247u", "");
    check("one character matches no reply", "\247m2\r\n20\r\n\247t\r\n", "2", "\247t", "");
    check("but a line", "\247m2\r\n2\r\n", "2", "2", "");
    check("a last line without its end", "\247m$9900!0", "$9900", "$9900!0", "");
    EXPECT_EQ(Elapsed(), milliseconds(0));
}

TEST_F(CommsTest, AWaitEndsWithItsClock)
{
    EXPECT_EQ(comms.WaitReply(1, "$9900", 0), "\247c");
    EXPECT_EQ(Elapsed(), milliseconds(4000));
    EXPECT_EQ(comms.WaitReply(1, "$9900", 2500), "\247w");
    EXPECT_EQ(Elapsed(), milliseconds(6500));
    // Lines that answer nothing do not lengthen it.
    loop.After(milliseconds(150), [this] { control.Text = "\247mother!0\r\n"; });
    EXPECT_EQ(comms.WaitReply(1, "$9900", 201), "\247w");
    EXPECT_EQ(Elapsed(), milliseconds(6800));
    // Without a limit the wait goes on until a line comes, an hour later here.
    loop.After(milliseconds(3'600'000), [this] { control.onEvent(LinkEvent::Reply, "$9900!0"); });
    EXPECT_EQ(comms.WaitReply(1, "$9900", -1), "$9900!0");
    EXPECT_EQ(Elapsed(), milliseconds(3'606'800));
    EXPECT_EQ(TimeLeft(std::chrono::seconds(60)) + TimeLeft(std::chrono::seconds(3599)), "1:0059:59");
}

TEST(RunningOperation, IsBusyAndWorksUnlessItAsks)
{
    RunningOperation running;
    std::string states;
    running.onChange = [&] { states += running.IsWorking() ? 'w' : running.IsBusy() ? 'a' : '-'; };
    {
        const LineOperation operation(running, "Scanning", "Scan");
        const OperationQuestion question(running);
    }
    EXPECT_EQ(states, "waw-");
}

TEST_F(CommsTest, EventsBecomeTaggedLinesAndSendClearsThem)
{
    control.onEvent(LinkEvent::Reply, "a\r\nb");
    control.onEvent(LinkEvent::CommandError, "1");
    control.onEvent(LinkEvent::CommunicationError, "2");
    control.onEvent(LinkEvent::CommandRejected, "3");
    control.onEvent(LinkEvent::TimeOut, "");
    EXPECT_EQ(control.Text, "\247ma  b\r\n\247e1\r\n\247e2\r\n\247r3\r\n\247t\r\n");
    EXPECT_TRUE(comms.Channel(4) == &control && !comms.Channel(0) && !comms.Channel(3) && !comms.Channel(5));
    ASSERT_TRUE(control.Open("9600,n,8,1") && control.Open("9600,n,8,1"));
    EXPECT_EQ(control.LongestExchange(), milliseconds(25'056))
        << "twelve longest frames, each way, and silences";
    comms.Send(1, "$9911");
    EXPECT_EQ(control.Text, "");
    EXPECT_EQ(comms.LastCommand(), "$9911");
    EXPECT_TRUE(control.IsWaiting());
}

TEST_F(CommsTest, WorkOnALineFromAPortThatIsHeldToATerminalThatIsAway)
{
    const auto hold = [&] {
        return WorkOnLine(comms, {1, "9600,n,8,1", 0}, {},
                          [](LineWork& work, LineResult&) { HoldLine(work); });
    };
    bench.port.refusal = PortFailure::InUse;
    bench.port.holder = "minicom (PID 7)";
    EXPECT_EQ(hold().failure.holder, "minicom (PID 7)");
    bench.port.refusal = PortFailure::None;
    LineProgress last;
    LineHooks hooks;
    hooks.progress = [&last](const LineProgress& progress) { last = progress; };
    EXPECT_TRUE(Upload(comms, {1, "9600,n,8,1", 0}, hooks).IsDone());
    EXPECT_EQ(last.left, std::chrono::seconds(0));
    bench.line.TakeAway();
    std::string sent;
    control.watcher = [&sent](const LineTraffic& traffic) { sent += traffic.bytes.substr(5, 5); };
    EXPECT_EQ(hold().warnings.at(0).detail, "$9911: no answer");
    EXPECT_EQ(sent, "$9918$9918$9918$9911");
}

TEST_F(CommsTest, RaiseForReplyChoosesTheErrorByTheHead)
{
    const std::tuple<const char*, std::uint32_t, const char*> errors[]{
        {"\247ebusy", 0x800400DC, "busy"},
        {"\247l", 0x800400E2, ""},
        {"\247r", 0x800400E3, ""},
        {"\247i", 0x800400E4, ""},
        {"\247s", 0x800400E5, ""},
        {"\247c", 0x800400DC, ""},
        {"\247t", 0x800400E0, ""},
        {"\247w", 0x800400E1, ""},
        {"\247xwhy so", 0x800400DF, "why so"},
        {"\247u", 0x80040122, ""},
        {"", 0x80040122, ""},
        {"20!", 0x800400DC, "the reply is too short"}};
    for (const auto& [reply, number, description] : errors)
        EXPECT_THAT([reply = reply] { RaiseForReply(reply, 4); },
                    Throws<ReplyError>(AllOf(Property(&ReplyError::Number, number),
                                             Property(&ReplyError::what, testing::StrEq(description)))))
            << reply;
    EXPECT_NO_THROW(RaiseForReply("20!0", 4));
    EXPECT_NO_THROW(RaiseForReply("\247zanything", 4));
}

TEST_F(CommsTest, TheDeviceListBecomesAMapOfCodes)
{
    EXPECT_EQ(ParseDeviceList("3", "214,191,99"), "\xD6\xBF\xFF");
    EXPECT_EQ(ParseDeviceList("7", "214,23,31,4,3,2,1"), "\xD6\x17\x1F\x04\x03\x02\x01");
    EXPECT_EQ(ParseDeviceList("1", "99999999999"), "\xFF");
    EXPECT_EQ(ParseDeviceList("0", ""), "");
    const std::pair<const char*, const char*> refused[]{
        {"2", "214"},  {"", "214"}, {"1", "x"},  {"2", "214,"},
        {"2", ",214"}, {"1", "-8"}, {"1", " 8"}, {"8", "1,2,3,4,8,23,31,191"}};
    for (const auto& [count, codes] : refused)
        EXPECT_THROW(ParseDeviceList(count, codes), ReplyError) << codes;
}

}  // namespace kelvora
