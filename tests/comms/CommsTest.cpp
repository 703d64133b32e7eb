#include "comms/Comms.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

#include "comms/LineCommands.h"
#include "comms/LineDrivers.h"
#include "comms/Reply.h"
#include "fakes/FakeEventLoop.h"

namespace kelvora {

namespace {

using std::chrono::milliseconds;

// A control that does as the test says with each command.
class ScriptedControl final : public LnkControl {
public:
    bool Open(std::string_view settings) override
    {
        opened.emplace_back(settings);
        return isOpen = failure == PortFailure::None;
    }
    void Close() override { isOpen = false; }
    bool IsOpen() const override { return isOpen; }
    PortFailure Failure() const override { return failure; }
    std::string LastError() const override { return "gone"; }
    std::string Device() const override { return "scripted"; }
    void Send(std::string_view command, int mostSends) override
    {
        isWaiting = true;
        sends = mostSends;
        sent.emplace_back(command);
        if (answer)
            answer(sent.back());
    }
    bool IsWaiting() const override { return isWaiting; }
    std::size_t Answers() const override { return answers; }
    milliseconds LongestExchange() const override { return milliseconds(20000); }
    milliseconds LongestFrameTime() const override { return milliseconds(500); }

    void Raise(LinkEvent event, std::string_view text)
    {
        isWaiting = false;
        answers += event == LinkEvent::Reply ? 1 : 0;
        onEvent(event, text);
    }

    std::function<void(const std::string& command)> answer;
    std::vector<std::string> sent;
    std::vector<std::string> opened;
    bool isOpen = false;
    bool isWaiting = false;
    std::size_t answers = 0;
    int sends = 0;
    PortFailure failure = PortFailure::None;
};

class CommsTest : public testing::Test {
protected:
    milliseconds Elapsed() const
    {
        return std::chrono::duration_cast<milliseconds>(loop.Now() - EventLoop::Time());
    }

    // Answers every command of the table; no answer to the others.
    void Answer(std::map<std::string, std::string> replies)
    {
        control.answer = [this, replies = std::move(replies)](const std::string& command) {
            const auto reply = replies.find(command);
            if (reply == replies.end())
                loop.After(milliseconds(3000), [this] { control.Raise(LinkEvent::TimeOut, "no answer"); });
            else
                loop.After(milliseconds(5),
                           [this, text = reply->second] { control.Raise(LinkEvent::Reply, text); });
        };
    }

    FakeEventLoop loop;
    ScriptedControl control;
    Comms comms{loop, {&control, nullptr, nullptr, nullptr}};
};

}  // namespace

TEST_F(CommsTest, WaitReplyJudgesEachLineOfTheMailbox)
{
    const struct {
        const char* why;
        const char* mailbox;
        const char* prefix;
        const char* reply;
        const char* left;
    } cases[]{
        {"any line without a prefix", "\xA7zfirst\r\nnext\r\n", "", "\xA7zfirst", "next\r\n"},
        {"the answer loses its tag", "\xA7m$9900!0%POS-7\r\n", "$9900", "$9900!0%POS-7", ""},
        {"another command's reply is skipped", "\xA7m20!0\r\n\xA7m$9900!0\r\nrest", "$9900", "$9900!0",
         "rest"},
        {"unknown tags are skipped", "\xA7z$9900\r\nnoise\r\n\xA7m$9900!0\r\n", "$9900", "$9900!0", ""},
        {"status 999", "\xA7m0FB0#999!1\r\n", "0FB0", "\xA7l0FB0#999!1", ""},
        {"status 2", "\xA7m0FB0!2\r\n", "0FB0", "\xA7r0FB0!2", ""},
        {"status 3", "\xA7m0FB0!3\r\n", "0FB0", "\xA7s0FB0!3", ""},
        {"status 5", "\xA7m0FB0!5\r\n", "0FB0", "\xA7i0FB0!5", ""},
        {"a count past the end", "\xA7m20!0$12\r\n", "20",
         "\xA7xa field of the reply to 20 runs past its end", ""},
        {"command or line error",
         "\xA7"
         "ewhy\r\n",
         "$9900",
         "\xA7"
         "ewhy",
         ""},
        {"rejected", "\xA7rwhy\r\n", "$9900", "\xA7rwhy", ""},
        {"default time",
         "\xA7"
         "c\r\n",
         "$9900",
         "\xA7"
         "c",
         ""},
        {"time-out of the control", "\xA7t\r\nrest\r\n", "$9900", "\xA7t", "rest\r\n"},
        {"undefined", "\xA7u\r\n", "$9900", "\xA7u", ""},
        {"other tags do not end the wait", "\xA7w\r\n\xA7x\r\n\xA7l\r\n\xA7u\r\n", "$9900", "\xA7u", ""},
        {"one character matches no reply", "\xA7m2\r\n20\r\n\xA7t\r\n", "2", "\xA7t", ""},
        {"a last line without its end", "\xA7m$9900!0", "$9900", "$9900!0", ""},
    };
    for (const auto& row : cases) {
        control.Text = row.mailbox;
        EXPECT_EQ(comms.WaitReply(1, row.prefix, 0), row.reply) << row.why;
        EXPECT_EQ(control.Text, row.left) << row.why;
        EXPECT_FALSE(comms.Clock(1).Enabled()) << row.why;
    }
    EXPECT_EQ(Elapsed(), milliseconds(0));
}

TEST_F(CommsTest, AWaitEndsWithItsClock)
{
    EXPECT_EQ(comms.WaitReply(1, "$9900", 0),
              "\xA7"
              "c");
    EXPECT_EQ(Elapsed(), milliseconds(4000));
    EXPECT_EQ(comms.WaitReply(1, "$9900", 2500), "\xA7w");
    EXPECT_EQ(Elapsed(), milliseconds(6500));
    // Lines that answer nothing do not lengthen it.
    loop.After(milliseconds(150), [this] { control.Text = "\xA7mother!0\r\n"; });
    EXPECT_EQ(comms.WaitReply(1, "$9900", 201), "\xA7w");
    EXPECT_EQ(Elapsed(), milliseconds(6800));
    // Without a limit the wait goes on until a line comes, an hour later here.
    loop.After(milliseconds(3'600'000), [this] { control.onEvent(LinkEvent::Reply, "$9900!0"); });
    EXPECT_EQ(comms.WaitReply(1, "$9900", -1), "$9900!0");
    EXPECT_EQ(Elapsed(), milliseconds(3'606'800));
}

TEST_F(CommsTest, EventsBecomeTaggedLinesAndSendClearsThem)
{
    control.onEvent(LinkEvent::Reply, "a\r\nb");
    control.onEvent(LinkEvent::CommandError, "1");
    control.onEvent(LinkEvent::CommunicationError, "2");
    control.onEvent(LinkEvent::CommandRejected, "3");
    control.onEvent(LinkEvent::TimeOut, "");
    EXPECT_EQ(control.Text,
              "\xA7ma  b\r\n\xA7"
              "e1\r\n\xA7"
              "e2\r\n\xA7r3\r\n\xA7t\r\n");
    comms.Send(1, "$9911");
    EXPECT_EQ(control.Text, "");
    EXPECT_EQ(comms.LastCommand(), "$9911");
    EXPECT_EQ(control.sent, std::vector<std::string>{"$9911"});
}

TEST_F(CommsTest, RaiseForReplyChoosesTheErrorByTheHead)
{
    const struct {
        const char* reply;
        std::uint32_t number;
        const char* description;
    } cases[]{
        {"\xA7"
         "ebusy",
         0x800400DC, "busy"},
        {"\xA7l", 0x800400E2, ""},
        {"\xA7r", 0x800400E3, ""},
        {"\xA7i", 0x800400E4, ""},
        {"\xA7s", 0x800400E5, ""},
        {"\xA7"
         "c",
         0x800400DC, ""},
        {"\xA7t", 0x800400E0, ""},
        {"\xA7w", 0x800400E1, ""},
        {"\xA7xwhy so", 0x800400DF, "why so"},
        {"\xA7u", 0x80040122, ""},
        {"", 0x80040122, ""},
        {"20!", 0x800400DC, "the reply is too short"},
    };
    for (const auto& row : cases) {
        try {
            RaiseForReply(row.reply, 4);
            ADD_FAILURE() << row.reply;
        } catch (const ReplyError& error) {
            EXPECT_EQ(error.Number(), row.number) << row.reply;
            EXPECT_STREQ(error.what(), row.description) << row.reply;
        }
    }
    EXPECT_NO_THROW(RaiseForReply("20!0", 4));
    EXPECT_NO_THROW(RaiseForReply("\xA7zanything", 4));
}

TEST_F(CommsTest, TheDeviceListBecomesAMapOfCodes)
{
    EXPECT_EQ(ParseDeviceList("3", "214,191,99"), "\xD6\xBF\xFF");
    EXPECT_EQ(ParseDeviceList("7", "214,23,31,4,3,2,1"), "\xD6\x17\x1F\x04\x03\x02\x01");
    EXPECT_EQ(ParseDeviceList("1", "99999999999"), "\xFF");
    EXPECT_EQ(ParseDeviceList("0", ""), "");
    for (const auto& [count, codes] :
         std::vector<std::pair<std::string, std::string>>{{"2", "214"},
                                                          {"", "214"},
                                                          {"1", "x"},
                                                          {"2", "214,"},
                                                          {"2", ",214"},
                                                          {"1", "-8"},
                                                          {"1", " 8"},
                                                          {"8", "1,2,3,4,8,23,31,191"}})
        EXPECT_THROW(ParseDeviceList(count, codes), ReplyError) << codes;
}

TEST_F(CommsTest, ADriverTellsWhereTheLineFailed)
{
    const LineTarget target{1, "9600,n,8,1", 0};
    const struct {
        const char* why;
        std::map<std::string, std::string> replies;
        std::uint32_t number;
        const char* detail;
        const char* lastSent;
        const char* map;
    } cases[]{
        {"nobody there: no release is owed", {}, 0x800400E0, "$9900: no answer", "$9900", ""},
        {"refused, but asked to hold the line",
         {{"$9900", "$9900!0!T"}, {"$9918", "$9918!2"}},
         0x800400E3,
         "$9918: status 2",
         "$9911",
         ""},
        {"another status",
         {{"$9900", "$9900!0!T"}, {"$9918", "$9918!7"}},
         0x800400DC,
         "$9918: status 7",
         "$9911",
         ""},
        {"no devices",
         {{"$9900", "$9900!0!T"}, {"$9918", "$9918!0"}, {"$9902", "$9902!1"}},
         0x800400DD,
         "$9902",
         "$9911",
         ""},
        {"the map stays",
         {{"$9900", "$9900!0!T"},
          {"$9918", "$9918!0"},
          {"$9902", "$9902!0!1#214"},
          {"000", "000!0"},
          {"0FB0", "0FB0!0$4096"}},
         0x800400DC,
         "0FB0: the flash has another size",
         "$9911",
         "\xD6"},
        {"a field too many",
         {{"$9900", "$9900!0!T!U"}},
         0x800400DF,
         "$9900: another number of fields",
         "$9900",
         ""},
        {"another command's answer",
         {{"$9900", "$9900!0!T"}, {"$9918", "$9918!0"}, {"$9902", "20!0"}},
         0x800400DF,
         "$9902: the answer is the one to another command",
         "$9911",
         ""},
    };
    for (const auto& row : cases) {
        control.sent.clear();
        Answer(row.replies);
        const LineResult result = ScanWithUpload(comms, target, {});
        EXPECT_EQ(result.outcome, LineOutcome::Failed) << row.why;
        EXPECT_EQ(result.failure.number, row.number) << row.why;
        EXPECT_EQ(result.failure.detail, row.detail) << row.why;
        EXPECT_EQ(control.sent.back(), row.lastSent) << row.why;
        EXPECT_EQ(result.deviceMap, row.map) << row.why;
        EXPECT_EQ(result.image, "") << row.why;
        EXPECT_FALSE(control.isOpen) << row.why;
    }
}

TEST_F(CommsTest, AStopIsAskedForBeforeEachCommandAndReleasesTheLine)
{
    Answer({{"$9900", "$9900!0!T"}, {"$9918", "$9918!0"}, {"$9911", "$9911!0"}});
    LineHooks hooks;
    hooks.stopRequested = [this] { return control.sent.size() == 2; };
    const LineResult result = ScanWithUpload(comms, {1, "9600,n,8,1", 0}, hooks);
    EXPECT_EQ(result.outcome, LineOutcome::Stopped);
    EXPECT_EQ(control.sent, (std::vector<std::string>{"$9900", "$9918", "$9911"}));
    EXPECT_FALSE(control.isOpen);
}

TEST_F(CommsTest, ALineThatDoesNotOpenSaysWhy)
{
    control.failure = PortFailure::InUse;
    const LineResult result = Upload(comms, {1, "9600,n,8,1", 0}, {});
    EXPECT_EQ(result.outcome, LineOutcome::NoPort);
    EXPECT_EQ(result.failure.port, PortFailure::InUse);
    EXPECT_EQ(Upload(comms, {2, "9600,n,8,1", 0}, {}).failure.port, PortFailure::Missing);
    EXPECT_TRUE(control.sent.empty());
}

}  // namespace kelvora
