#include "eeprom/ModuleProtocol.h"

#include <gtest/gtest.h>

#include "ScriptedPort.h"
#include "eeprom/ModuleMeaning.h"
#include "fakes/FakePrompt.h"

namespace kelvora {

using namespace std::chrono_literals;

TEST(ModuleFrame, IsBuiltAndJudged)
{
    EXPECT_EQ(BuildModuleFrame(""), Bytes("\x02\x00\x00\x03"));
    EXPECT_EQ(BuildModuleFrame("\xFF\x0F\x30"), Bytes("\x02\x03\xFF\x0F\x30\xC0\x03"));
    const auto check = [&](const std::string& reason, const std::string& received, const std::string& data,
                           int error) {
        EXPECT_EQ(JudgeReply(received).data, data) << reason;
        EXPECT_EQ(JudgeReply(received).error, error) << reason;
    };
    check("one byte", Bytes("\x02\x01\x41\x41\x03"), "A", 0);
    check("of any codes", Bytes("\x02\x03\x00\x02\x03\x01\x03"), Bytes("\x00\x02\x03"), 0);
    check("no data", Bytes("\x02\x00\x00\x03"), "", -21);
    check("one stray byte", "\x06", "", -21);
    check("length too small", Bytes("\x02\x01\x41\x42\x03\x03"), "", -21);
    check("length too large", Bytes("\x02\x02\x41\x41\x03"), "", -21);
    check("no ETX", Bytes("\x02\x01\x41\x41\x04"), "", -21);
    check("no STX", Bytes("\x01\x01\x41\x41\x03"), "", -21);
    check("wrong LRC keeps the data", Bytes("\x02\x01\x41\x40\x03"), "A", -23);
    check("256 bytes have no length byte", Bytes("\x02\x00") + std::string(257, '\0') + "\x03", "", -21);
}

class Protocol : public testing::Test {
protected:
    Protocol()
    {
        protocol.OpenCommsLine();
        protocol.watcher = [this](const LineTraffic& traffic) { damage = traffic.damage; };
    }

    /// How long `work` takes, in milliseconds.
    template <class Work>
    long long Duration(Work work)
    {
        const EventLoop::Time start = loop.Now();
        work();
        return std::chrono::duration_cast<std::chrono::milliseconds>(loop.Now() - start).count();
    }

    FakeEventLoop loop;
    ScriptedPort port{loop};
    FakePrompt prompt;
    ModuleProtocol protocol{port, loop, prompt};
    LineTraffic::Damage damage{};  ///< of what passed last
};

TEST_F(Protocol, TimeOutsEndOnTheirTick)
{
    const std::map<int, std::vector<int>> timeOutsByEnd{
        {55, {0, -1, -70000}}, {110, {1, 50, 54, 55, 83, 65536, 100000}}, {165, {82, 500}}};
    for (const auto& [ends, timeOuts] : timeOutsByEnd)
        for (const int ms : timeOuts)
            EXPECT_EQ(Duration([&] { protocol.WaitMsg(1, false, ms); }), ends) << ms;
    EXPECT_DOUBLE_EQ(WaitBudget(500), 500.0 / 9);
    EXPECT_DOUBLE_EQ(WaitBudget(50), 50);
    EXPECT_DOUBLE_EQ(WaitBudget(100000), 65536.0 / 1192);
}

TEST_F(Protocol, SendsAndJudges)
{
    using Answer = ScriptedPort::Answer;
    const Answer ready{{5, "\x11"}};
    const std::string frame = Bytes("\x02\x02\x00\xF7\xF7\x03");
    const auto check = [&](const char* reason, const Answer& toEnquiry, const Answer& toFrame, int error,
                           int lasts) {
        SCOPED_TRACE(reason);
        port.written.clear();
        port.answers = {{Enquiry, {toEnquiry}}, {frame, {toFrame}}};
        bool sent = false;
        EXPECT_EQ(Duration([&] { sent = protocol.SendMsg(Bytes("\x00\xF7")); }), lasts);
        EXPECT_EQ(protocol.CommsError(), error);
        EXPECT_EQ(sent, error == 0);
        EXPECT_EQ(damage == LineTraffic::Damage::Noise, error == -25 || error == -26);
        EXPECT_EQ(port.written, toEnquiry == ready ? std::vector({Enquiry, frame}) : std::vector({Enquiry}));
        loop.Pass(1s);
    };
    check("nothing after ENQ", {}, {}, -20, 110);
    check("ready too late", {{111, "\x11"}}, {}, -20, 110);
    check("NAK after ENQ", {{5, "\x15"}}, {}, -25, 5);
    check("DC1 and more", {{5, "\x11\x15"}}, {}, -26, 5);
    check("nothing after the frame", ready, {}, -20, 110);
    check("ACK too late", ready, {{106, "\x06"}}, -20, 110);
    check("ACK lasts the whole window", ready, {{9, "\x06"}}, 0, 110);
    check("ACK ACK", ready, {{9, "\x06"}, {60, "\x06"}}, 0, 110);
    check("ACK NAK", ready, {{9, "\x06\x15"}}, -41, 110);
    check("ACK and the reply too soon", ready, {{9, "\x06\x02\x06"}}, -26, 110);
    check("only two bytes are judged", ready, {{9, "\x06\x06\x15"}}, 0, 110);
    check("NAK", ready, {{9, "\x15"}}, -40, 110);
    check("NAK ACK", ready, {{9, "\x15\x06"}}, -40, 110);
    check("DC1 again", ready, {{9, "\x11"}}, -26, 110);
    EXPECT_TRUE(prompt.shown.empty()) << "errors are not reported unless asked for";
    protocol.SetReportCommsErrors(true);
    port.answers = {{Enquiry, {ready, {}}}};
    protocol.SendCmd(Bytes("\x00"), "\xF7");
    EXPECT_EQ(port.written.back(), frame);
    protocol.SendMsg("a");
    EXPECT_EQ(prompt.shown.back().body, "No response from MID");
}

TEST_F(Protocol, LeftOversAreNoAnswers)
{
    port.answers = {{Enquiry, {{{5, "\x11"}, {5, "\x06"}}}}, {Identify[0], {{}}}};
    EXPECT_FALSE(protocol.SendMsg(Bytes("\x00\xF7")));
    EXPECT_EQ(protocol.CommsError(), -20) << "an ACK that came before the frame went out";
    port.answers = {{Enquiry, {{{5, "\x11"}}}}, {Identify[0], {{{9, "\x06\x06"}, {20, "\x06zz"}}}}};
    EXPECT_TRUE(protocol.SendMsg(Bytes("\x00\xF7")));
    EXPECT_EQ(protocol.WaitMsg(1, false, 50), "\x06zz") << "what follows the acknowledgement";
}

TEST_F(Protocol, WaitsForReplies)
{
    const std::string frame = Bytes("\x02\x01\x41\x41\x03");
    const auto check = [&](const std::string& reason, const ScriptedPort::Answer& answer,
                           std::uint8_t expected, bool framed, const std::string& expectedReply, int error,
                           int lasts) {
        port.answers = {{"?", {answer}}};
        port.Write("?");
        damage = {};
        std::string reply;
        EXPECT_EQ(Duration([&] { reply = protocol.WaitMsg(expected, framed, 500); }), lasts) << reason;
        EXPECT_EQ(reply, expectedReply) << reason;
        EXPECT_EQ(protocol.CommsError(), error) << reason;
        EXPECT_EQ(damage == LineTraffic::Damage::BadFrame, error != 0) << reason;
        loop.Pass(1s);
        port.DiscardInput();
    };
    check("framed lasts to the end", {{10, frame}}, 5, true, "A", 0, 165);
    check("framed, four bytes more than expected", {{10, frame}}, 1, true, "A", 0, 10);
    check("unframed ends early", {{10, "ab"}, {20, "c"}}, 3, false, "abc", 0, 20);
    check("unframed and short", {{10, "ab"}}, 3, false, "ab", 0, 165);
    check("corrupted", {{10, frame + "x"}}, 5, true, "", -21, 165);
    check("too late", {{166, frame}}, 5, true, "", 0, 165);
    check("any length", {{10, "ab"}, {170, "cd"}, {300, "e"}}, 0, false, "abcde", 0, 165 + 3 * 110);
    check("nothing of any length", {}, 0, false, "", 0, 165 + 110);
    const std::string longest(4096, 'a');
    check("no longer than any", {{10, longest.substr(1)}, {200, "a"}}, 0, false, longest, 0, 165 + 110);
}

TEST_F(Protocol, LineOpensAtItsSpeed)
{
    for (const int speed : {4, 0, 5, 1}) {
        protocol.SetCommSpeed(speed);
        EXPECT_EQ(protocol.Settings(), speed == 1 ? "9600,n,8,1" : "1200,n,8,1") << speed;
    }
    protocol.CloseCommsLine();
    EXPECT_FALSE(port.IsOpen());
    port.fixedSettings = true;
    EXPECT_FALSE(protocol.OpenCommsLine() || port.IsOpen());
    EXPECT_EQ(protocol.Failure(), PortFailure::FixedSettings);
    port.SetDevice("bridge:a:1");
    EXPECT_FALSE(protocol.OpenCommsLine());
    EXPECT_EQ(protocol.Failure(), PortFailure::CommandsOnly) << "not even connected to";
    port.SetDevice("/dev/ttyS0");
    port.opens = false;
    EXPECT_FALSE(protocol.OpenCommsLine());
    EXPECT_EQ(protocol.Failure(), PortFailure::InUse);
}

TEST_F(Protocol, QuietCountsFromTheLastByte)
{
    port.answers = {{"?", {{{150, "a"}, {290, "b"}}}}};
    port.Write("?");
    EXPECT_EQ(Duration([&] { EXPECT_TRUE(protocol.WaitQuiet(165ms)); }), 290 + 165);
    EXPECT_EQ(port.BytesWaiting(), 0U);

    ScriptedPort::Answer noise;
    for (int at = 100; at < 10000; at += 100)
        noise.push_back({at, "x"});
    port.answers = {{"?", {noise}}};
    port.Write("?");
    EXPECT_EQ(Duration([&] { EXPECT_FALSE(protocol.WaitQuiet(165ms)) << "never quiet"; }), 5055);
    port.Close();
    EXPECT_FALSE(protocol.WaitQuiet(200ms)) << "lost";
}

TEST(ModuleMeaning, NamesRequestsAndAnswers)
{
    using enum LineTraffic::Direction;
    const auto check = [&](LineTraffic::Direction direction, const std::string& bytes,
                           const std::string& meaning) {
        EXPECT_EQ(ModuleMeaning({direction, LineTraffic::Damage::None, bytes}), meaning) << meaning;
    };
    check(Sent, Bytes("\x02\x0C\x02\xFA\x00\xAA\xAA\x55\xBF\x00\x00\x00\x00\x00\x12\x03"),
          "write address 2, EEPROM 00AA: AA 55 BF 00 00 00 00 00");
    check(Sent, Identify[2], "identify address 2");
    check(Received, BadgeReply, "reply, EEPROM AA 55 00 00 00 02 00 00");
    check(Received, Bytes("\x02\x01\x41\x41\x03"), "reply, 1 bytes");
    check(Received, "\x06\x15", "refused, wrong ETX");
    check(Sent, Bytes("\x02\x01\x41\x41\x03"), "");
    check(Sent, Bytes("\x02\x04\x00\xF9\x00\xAA\x53\x03"), "");
    check(Received, "\x02", "");
    check(Received, "", "");
}

}  // namespace kelvora
