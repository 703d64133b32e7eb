#include "comms/BridgeLink.h"

#include <gtest/gtest.h>

#include "comms/FrameMeaning.h"
#include "comms/LineCommands.h"
#include "comms/LineDrivers.h"
#include "comms/LineLink.h"
#include "fakes/FakeConnection.h"
#include "network/NetworkPort.h"

namespace kelvora {

class BridgeLinkTest : public testing::Test {
protected:
    BridgeLinkTest()
    {
        port.SetDevice("bridge:a:1");
        link.onEvent = [this](LinkEvent event, std::string_view text) {
            events.emplace_back(event, std::string(text));
        };
    }

    using Events = std::vector<std::pair<LinkEvent, std::string>>;

    FakeEventLoop loop;
    std::unique_ptr<FakeConnection> made = std::make_unique<FakeConnection>(loop);
    FakeConnection& connection = *made;
    NetworkPort port{std::move(made), loop};
    LineLink link{port, loop};
    Events events;
};

TEST_F(BridgeLinkTest, EachCommandGetsTheEventOfOneLine)
{
    ASSERT_TRUE(link.Open("9600,n,8,1"));
    using enum LinkEvent;
    const auto check = [&](const char* line, LinkEvent event, const char* text) {
        link.Send("$9900", LnkControl::UsualSends);
        for (const char byte : std::string_view(line))
            connection.onBytes(std::string_view(&byte, 1));
        EXPECT_EQ(std::exchange(events, {}), (Events{{event, text}})) << line;
    };
    check("\xA7m$9900!0\n", Reply, "$9900!0");
    check("\xA7m$9900!0\xA7m\xFF\r\n", Reply, "$9900!0\xA7m\xFF");
    check("\xA7\x65why\n", CommandError, "why");
    check("\xA7r\n", CommandRejected, "");
    check("\xA7t\n", TimeOut, "");
    const std::string longest = "\xA7m" + std::string(BridgeLink::LongestLine - 2, 'a');
    check((longest + "\r\n").c_str(), Reply, longest.c_str() + 2);
    EXPECT_EQ(connection.written, std::vector<std::string>(6, "$9900\n"));
    EXPECT_EQ(link.Answers(), 5U) << "a bridge that gave up tells of none";
}

TEST_F(BridgeLinkTest, AnswersToCommandsThatWereGivenUpAreNobodyElses)
{
    ASSERT_TRUE(link.Open(""));
    link.Send("0FB0", LnkControl::UsualSends);
    link.Send("20", LnkControl::UsualSends);
    connection.onBytes("\xA7m0FB0!0\n");
    EXPECT_TRUE(events.empty());
    connection.onBytes("\xA7m20!0\n");
    EXPECT_EQ(std::exchange(events, {}), (Events{{LinkEvent::Reply, "20!0"}}));

    link.Send("0FB3", LnkControl::UsualSends);
    loop.Pass(BridgeLink::LongestAnswer);
    EXPECT_EQ(std::exchange(events, {}), (Events{{LinkEvent::TimeOut, "no answer from the bridge"}}));
    link.Send("0F02", LnkControl::UsualSends);
    connection.onBytes("\xA7m0FB3!0\r\n\xA7m0F02!0\r\n");
    EXPECT_EQ(events, (Events{{LinkEvent::Reply, "0F02!0"}}));
    EXPECT_TRUE(link.IsOpen());
    link.Send("20", LnkControl::UsualSends);
    link.Close();
    EXPECT_FALSE(link.IsWaiting());
}

TEST_F(BridgeLinkTest, ALineThatBelongsToNoCommandEndsTheConnection)
{
    const auto check = [&](const char* why, const std::string& said, const char* words,
                           PortFailure failure = PortFailure::NoBridge) {
        ASSERT_TRUE(link.Open("")) << why;
        events.clear();
        link.Send("20", LnkControl::UsualSends);
        if (said.empty())
            connection.HangUp();
        connection.onBytes(said);
        EXPECT_FALSE(link.IsOpen() || port.IsOpen()) << why;
        EXPECT_EQ(link.LastError(), words) << why;
        EXPECT_EQ(link.Failure(), failure) << why;
        ASSERT_EQ(events.size(), 1U) << why;
        EXPECT_EQ(events[0].second, said.starts_with("\xA7m2") ? "20!0" : words) << why;
        loop.Pass(BridgeLink::LongestAnswer);
        EXPECT_EQ(events.size(), 1U) << why;
    };
    check("two answers", "\xA7m20!0\n\xA7t\n", "the bridge has answered what was not asked");
    check("no tag", "Welcome\n", "a line of the bridge has no tag");
    check("an empty line", "\r\n", "a line of the bridge has no tag");
    check("the tag in another encoding", "\xC2\xA7m20!0\n", "a line of the bridge has no tag");
    check("a tag of the program's own", "\xA7w20\n", "a line of the bridge has no tag");
    check("no end", "\xA7m" + std::string(BridgeLink::LongestLine, 'a'), "a line of the bridge is too long");
    check("hung up", "", "the server has closed the connection", PortFailure::Disconnected);
    connection.says = {{20, "Welcome\n"}};
    EXPECT_FALSE(link.Open("") || port.IsOpen()) << "also before the first command";
    EXPECT_EQ(link.LastError(), "a line of the bridge has no tag");
    connection.says.clear();
    ASSERT_TRUE(port.Open());
    EXPECT_FALSE(link.Open("")) << "somebody else has it";
    EXPECT_EQ(link.Failure(), PortFailure::InUse);
    port.Close();
    connection.refusal = PortFailure::Refused;
    EXPECT_FALSE(link.Open(""));
    EXPECT_EQ(link.Failure(), PortFailure::Refused);
    events.clear();
    link.Send("20", LnkControl::UsualSends);
    EXPECT_EQ(events, (Events{{LinkEvent::CommunicationError, "the system's words"}}));
}

// The scan over a bridge is that over a wire, also for those who watch it.
TEST_F(BridgeLinkTest, DriversWorkOverItWithAnySettings)
{
    Comms comms(loop, {&link, nullptr, nullptr, nullptr});
    std::vector<std::string> watched;
    link.watcher = [&](const LineTraffic& traffic) { watched.push_back(FrameMeaning(traffic)); };
    connection.answers = {{"$9904!0\n", "\xA7m$9904!0!0\n"}, {"$9904!2\n", "\xA7tno\n"}};
    const auto setMode = [&](char mode) {
        return WorkOnLine(comms, {1, "9600,n,7,1", 0}, {},
                          [mode](LineWork& work, LineResult&) { SetLineMode(work, mode); });
    };
    EXPECT_TRUE(setMode('0').IsDone());
    EXPECT_EQ(setMode('2').failure.number, 0x800400E0U);
    EXPECT_EQ(watched, (std::vector<std::string>{"command $9904!0", "reply $9904, 0", "command $9904!2",
                                                 "no answer: no"}));
    EXPECT_EQ(setMode('3').failure.detail, "$9904: no answer from the bridge") << "as long as that takes";
    ASSERT_TRUE(link.Open(""));
    port.SetDevice("/dev/ttyS0");
    EXPECT_TRUE(link.Open("9600,n,7,1")) << "an open line is not left";
    link.Close();
    const LineResult another = setMode('0');
    EXPECT_EQ(another.outcome, LineOutcome::NoPort);
    EXPECT_EQ(another.failure.port, PortFailure::SevenBits) << "it is spoken to in another way";
}

}  // namespace kelvora
