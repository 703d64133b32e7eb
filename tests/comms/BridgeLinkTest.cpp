#include "comms/BridgeLink.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

#include "comms/FrameMeaning.h"
#include "comms/LineDrivers.h"
#include "comms/LineLink.h"
#include "fakes/FakeEventLoop.h"
#include "platform/SerialPort.h"

namespace kelvora {
namespace {

using std::chrono::milliseconds;

// A connection to a bridge that does as the test says.
class BridgePort final : public SerialPort {
public:
    const std::string& Device() const override { return device; }
    void SetDevice(std::string changed) override { device = std::move(changed); }
    bool Open() override { return open_ = failure == PortFailure::None; }
    void Close() override { open_ = false; }
    bool IsOpen() const override { return open_; }
    PortFailure Failure() const override { return failure; }
    std::string LastError() const override { return "gone"; }
    bool SetSettings(std::string_view /*settings*/) override { return true; }
    const std::string& Settings() const override { return device; }
    void Write(std::string_view bytes) override
    {
        written += bytes;
        if (answer)
            answer(std::string(bytes));
    }
    std::size_t BytesWaiting() const override { return input_.size(); }
    std::string Read(std::size_t /*limit*/) override { return std::exchange(input_, {}); }
    void DiscardInput() override { input_.clear(); }

    void Say(std::string_view bytes)
    {
        input_ += bytes;
        onBytes();
    }
    void HangUp()
    {
        open_ = false;
        failure = PortFailure::Disconnected;
        onLost();
    }

    std::string device = "bridge:a:1";
    PortFailure failure = PortFailure::None;
    std::string written;
    std::function<void(const std::string&)> answer;

private:
    std::string input_;
    bool open_ = false;
};

class BridgeLinkTest : public testing::Test {
protected:
    BridgeLinkTest()
    {
        link.onEvent = [this](LinkEvent event, std::string_view text) {
            events.emplace_back(event, std::string(text));
        };
    }

    using Events = std::vector<std::pair<LinkEvent, std::string>>;

    FakeEventLoop loop;
    BridgePort port;
    LineLink link{port, loop};
    Events events;
};

TEST_F(BridgeLinkTest, EachCommandGetsTheEventOfOneLine)
{
    ASSERT_TRUE(link.Open("9600,n,8,1"));
    using enum LinkEvent;
    const struct {
        const char* line;
        LinkEvent event;
        const char* text;
    } cases[]{
        {"\xA7m$9900!0\n", Reply, "$9900!0"},
        {"\xA7m$9900!0\xA7m\xFF\r\n", Reply, "$9900!0\xA7m\xFF"},
        {"\xA7\x65why\n", CommandError, "why"},
        {"\xA7r\n", CommandRejected, ""},
        {"\xA7t\n", TimeOut, ""},
    };
    for (const auto& [line, event, text] : cases) {
        link.Send("$9900");
        for (const char byte : std::string_view(line))
            port.Say(std::string_view(&byte, 1));
        EXPECT_EQ(std::exchange(events, {}), (Events{{event, text}})) << line;
    }
    EXPECT_EQ(port.written, "$9900\n$9900\n$9900\n$9900\n$9900\n");
}

TEST_F(BridgeLinkTest, AnswersToCommandsThatWereGivenUpAreNobodyElses)
{
    ASSERT_TRUE(link.Open(""));
    link.Send("0FB0");
    link.Send("20");
    port.Say("\xA7m0FB0!0\n");
    EXPECT_TRUE(events.empty());
    port.Say("\xA7m20!0\n");
    EXPECT_EQ(std::exchange(events, {}), (Events{{LinkEvent::Reply, "20!0"}}));

    link.Send("0FB3");
    loop.Pass(BridgeLink::LongestAnswer);
    EXPECT_EQ(std::exchange(events, {}), (Events{{LinkEvent::TimeOut, "no answer from the bridge"}}));
    link.Send("0F02");
    port.Say("\xA7m0FB3!0\r\n\xA7m0F02!0\r\n");
    EXPECT_EQ(events, (Events{{LinkEvent::Reply, "0F02!0"}}));
    EXPECT_TRUE(link.IsOpen());
}

TEST_F(BridgeLinkTest, ALineThatBelongsToNoCommandEndsTheConnection)
{
    const struct {
        const char* why;
        std::string said;
        const char* words;
    } cases[]{
        {"two answers", "\xA7m20!0\n\xA7t\n", "the bridge has answered what was not asked"},
        {"no tag", "Welcome\n", "a line of the bridge has no tag"},
        {"an empty line", "\r\n", "a line of the bridge has no tag"},
        {"the tag in another encoding", "\xC2\xA7m20!0\n", "a line of the bridge has no tag"},
        {"a tag of the program's own", "\xA7w20\n", "a line of the bridge has no tag"},
        {"no end", "\xA7m" + std::string(BridgeLink::LongestLine, 'a'), "a line of the bridge is too long"},
    };
    for (const auto& [why, said, words] : cases) {
        ASSERT_TRUE(link.Open("")) << why;
        events.clear();
        link.Send("20");
        port.Say(said);
        EXPECT_FALSE(link.IsOpen() || port.IsOpen()) << why;
        EXPECT_EQ(link.LastError(), words) << why;
        ASSERT_EQ(events.size(), 1U) << why;
        EXPECT_EQ(events[0].first == LinkEvent::Reply,
                  said.front() == '\xA7' && said[1] == 'm' && said[2] == '2');
        loop.Pass(BridgeLink::LongestAnswer);
        EXPECT_EQ(events.size(), 1U) << why;
    }
    ASSERT_TRUE(link.Open(""));
    events.clear();
    link.Send("20");
    port.HangUp();
    EXPECT_EQ(events, (Events{{LinkEvent::CommunicationError, "gone"}}));
    EXPECT_EQ(link.Failure(), PortFailure::Disconnected);
    EXPECT_FALSE(link.Open(""));
    events.clear();
    link.Send("20");
    EXPECT_EQ(events, (Events{{LinkEvent::CommunicationError, "the line is closed"}}));
}

// The scan over a bridge is that over a wire, also for those who watch it.
TEST_F(BridgeLinkTest, DriversWorkOverIt)
{
    Comms comms(loop, {&link, nullptr, nullptr, nullptr});
    std::vector<std::string> watched;
    link.watcher = [&](const LineTraffic& traffic) { watched.push_back(FrameMeaning(traffic)); };
    const std::map<std::string, std::string> replies{
        {"$9904!0\n", "\xA7m$9904!0!0\n"}, {"$9904!1\n", "\xA7rno\n"}, {"$9904!2\n", "\xA7tno\n"}};
    port.answer = [&](const std::string& line) {
        loop.After(milliseconds(5), [this, reply = replies.at(line)] { port.Say(reply); });
    };
    EXPECT_TRUE(SendLineMode(comms, {1, "9600,n,7,1", 0}, '0').IsDone());
    port.answer = [&](const std::string& line) {
        loop.After(milliseconds(5), [this, line, &replies] {
            const auto reply = replies.find(line);
            port.Say(reply == replies.end() ? "\xA7m$9911!0\n" : reply->second);
        });
    };
    EXPECT_EQ(SendLineMode(comms, {1, "", 0}, '1').failure.number, 0x800400E3U);
    EXPECT_EQ(SendLineMode(comms, {1, "", 0}, '2').failure.number, 0x800400E0U);
    EXPECT_EQ(watched, (std::vector<std::string>{"command $9904!0", "reply $9904, 0", "command $9904!1",
                                                 "command rejected: no", "command $9911", "reply $9911",
                                                 "command $9904!2", "no answer: no"}));
    port.device = "/dev/ttyS0";
    EXPECT_EQ(SendLineMode(comms, {1, "9600,n,7,1", 0}, '0').failure.port, PortFailure::SevenBits)
        << "another device is spoken to in another way";
}

}  // namespace
}  // namespace kelvora
