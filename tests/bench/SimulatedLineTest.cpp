#include <gtest/gtest.h>

#include <string_view>
#include <vector>

#include "bench/BareLine.h"
#include "bench/TerminalFrame.h"

using namespace kelvora;
using namespace kelvora::bench;
using namespace std::chrono_literals;
using namespace std::string_literals;

namespace {

struct Exchange {
    std::string sent;
    std::string heard;
    const char* why;
};

// Frames whose sums were reckoned apart from these programs.
const std::string AskName = "\0010001$9900\003AFD3";
const std::string Name = "\0010001M$9900!0.BENCH TERMINAL\003C586";
const std::string SetMode = "\0010003$9904!2\00386FE";
const std::string AskMode = "\0010004$9904\003AC56";
const std::string Mode = "\0010004M$9904!0!0\003BF67";
const std::string Nothing;

// The writable block of address 3, and the frame that reads it back.
const std::string Enquiry = "\5";
const std::string Ready = "\x11";
const std::string ReadThree = "\2\5\3\xF9\0\xAA\10\x58\3"s;

constexpr auto ByteTime = 1042us;  // at 9600 baud

void Check(BareLine& bench, const std::vector<Exchange>& exchanges)
{
    for (const auto& [sent, heard, why] : exchanges)
        EXPECT_EQ(bench.Ask(sent), heard) << why;
}

}  // namespace

TEST(SimulatedLine, TerminalStopsAndWaits)
{
    BareLine bench;
    bench.line.Terminal().AnswerNext("$9904", "E$9904 broken");
    const std::string map = "\0010002M$9902!0!4*214,23,4,3\003C8A4";
    Check(bench, {
                     {AskName, Name, "a command"},
                     {AskName, Name, "the last answer again"},
                     {"xyz\0010001$99\0010002$9902\0034171", map, "SOH begins anew"},
                     {"\0010003$9904!2\00386FF", "\x15", "a wrong CRC"},
                     {"\0010003$9904!2\00386fe", "\x15", "a CRC in small letters"},
                     {"\0010003$99\n4!2\00386FE", "\x15", "a raw control byte"},
                     {SetMode, "\0010003E$9904 broken\0033082", "a scripted answer"},
                     {AskMode, Mode, "which kept the command from running"},
                     {"\001A0FF$1234\0032757", "\001A0FFM$1234!2\003012C", "an unknown command"},
                     {"\0010005$9902", Nothing, "half a frame"},
                     {"", Nothing, ""},
                     {"\0030000", Nothing, "which is stale when the rest comes"},
                 });
}

TEST(SimulatedLine, TerminalRunsACommandOnceAndLeavesItForANewOne)
{
    BareLine bench;
    bench.line.SetFaults({.delay = 300ms});
    bench.port.Write(SetMode);
    bench.loop.Pass(100ms);
    bench.port.Write(SetMode);
    bench.loop.Pass(260ms);
    EXPECT_EQ(bench.port.Read(0), "\0010003M$9904!0!2\003B698")
        << "a repeat while it runs is no second command";
    EXPECT_EQ(bench.Ask(""), "");

    bench.port.Write(AskMode);
    bench.loop.Pass(200ms);
    EXPECT_EQ(bench.Ask(AskName), Name) << "the command in flight is never answered";
    EXPECT_EQ(bench.line.Memory().mode, '2');
}

TEST(SimulatedLine, NewCommandCutsTheAnswerBeforeIt)
{
    BareLine bench;
    bench.port.Write(AskName);
    bench.loop.Pass(24 * ByteTime);
    bench.port.Write(AskMode);
    bench.loop.Pass(1s);
    EXPECT_EQ(bench.port.Read(0), Name.substr(0, 24) + Mode);
}

TEST(SimulatedLine, ModulesAnswerTheirProtocol)
{
    BareLine bench;
    Check(bench, {
                     {Enquiry, Ready, "ready to receive"},
                     {"\2\2\3\xF7\xF4\3", "\6\6\2\6\3\3671.00\xEB\3", "identify"},
                     {Enquiry, Ready, ""},
                     {ReadThree, "\6\6\2\12\3\xF9\xAA\x55\0\0\0\3\0\0\6\3"s, "the badge reader's block"},
                     {Enquiry, Ready, ""},
                     {"\2\14\3\xFA\0\xAA\xAA\x55\xBF\0\0\0\0\0\x13\3"s, "\6\6", "write"},
                     {Enquiry, Ready, ""},
                     {ReadThree, "\6\6\2\12\3\xF9\xAA\x55\xBF\0\0\0\0\0\xBA\3"s, "the new block"},
                     {Enquiry, Ready, ""},
                     {"\2\2\3\xF7\xF5\3", "\x15", "a wrong LRC"},
                     {Enquiry, Ready, ""},
                     {"\2\2\3\xF7\xF4\4", "\6\x15", "a wrong ETX"},
                     {Enquiry, Ready, ""},
                     {"\2\2\4\xF7\xF3\3", Nothing, "nobody at address 4"},
                     {"\2\2\3\xF7\xF4\3", Nothing, "a frame that no ENQ announced"},
                     {Enquiry, Ready, ""},
                     {AskName, Name, "the terminal, after an ENQ"},
                     {"?" + Enquiry, Nothing, "ENQ within other bytes"},
                 });
    EXPECT_EQ(DeviceMapOf(bench.line.Memory().modules), (std::vector<std::uint8_t>{214, 23, 4, 191}));
}

TEST(SimulatedLine, RefusesCommandsPickedByName)
{
    using enum CommandFault::Kind;
    BareLine bench;
    bench.line.SetFaults({.commands = {{Status, "$9904", 0, {}, "5"},
                                       {Status, "$9904!3", 0, {}, "2"},
                                       {Status, "0FB3+", 0, {}, "999"},
                                       {Status, "0F02.", 2, {}, "3"}}});
    const std::vector<std::pair<std::string, std::string>> replies{
        {"$9904!3", "$9904!2"},       {"$9904!0", "$9904!5"}, {"$9904", "$9904!5"}, {"0FB0", "0FB0!0$8192"},
        {"0FB300000000", "0FB3#999"}, {"0FB3", "0FB3!0"},     {"0F021", "0F02!2"},  {"0F02", "0F02!0("},
        {"0F02", "0F02!3"},           {"0F02", "0F02!0("},
    };
    std::uint32_t exchange = 0;
    for (const auto& [command, reply] : replies) {
        const std::string head = Hex(++exchange, 4);
        const std::string heard = bench.Ask(MakeFrame(head, command));
        EXPECT_EQ(heard.substr(0, 6 + reply.size()), Soh + head + "M" + reply) << command;
    }
    EXPECT_EQ(bench.line.Memory().mode, '0') << "what is refused is not done";
}

TEST(SimulatedLine, AnswersLateOrForAnotherCommand)
{
    using enum CommandFault::Kind;
    BareLine bench;
    bench.line.SetFaults({.commands = {{Late, "$9900", 2, 1100ms}}});
    EXPECT_EQ(bench.Ask(AskName), Name);
    bench.port.Write(AskName);
    bench.loop.Pass(1s);
    EXPECT_EQ(bench.Ask(AskName), Name) << "the answer again, late and once";
    EXPECT_EQ(bench.Ask(AskName), Name);

    const std::string askMap = MakeFrame("0002", "$9902");
    const std::string map = MakeFrame("0002", "M$9902!0!4*214,23,4,3");
    bench.line.SetFaults({.commands = {{WrongReply, "$9902", 1}, {WrongReply, "$9900"}}});
    Check(bench, {{askMap, MakeFrame("0002", "M$9900!0.BENCH TERMINAL"), "once"},
                  {askMap, map, "the repeated answer"},
                  {MakeFrame("0003", "$9900"), MakeFrame("0003", "M$9902!0!4*214,23,4,3"), "each time"}});

    bench.line.SetFaults({.delay = 300ms});
    bench.port.Write(AskName.substr(0, AskName.size() - 1) + "0");
    bench.loop.Pass(300ms);
    EXPECT_EQ(bench.port.Read(0), "");
    EXPECT_EQ(bench.Ask(""), "\x15");
    bench.Ask(MakeFrame("0004", "$9902"));
    bench.port.Write(MakeFrame("0004", "$9902"));
    bench.loop.Pass(300ms);
    EXPECT_EQ(bench.port.Read(0), "") << "an answer that is repeated is as late";
}

TEST(SimulatedLine, IsNeverQuietWithStrayBytes)
{
    BareLine bench;
    bench.line.SetFaults({.stray = 100ms});
    bench.loop.Pass(1s);
    EXPECT_EQ(bench.port.Read(0), "") << "nobody has spoken yet";
    bench.Ask(AskName);
    bench.loop.Pass(700ms);
    EXPECT_EQ(bench.port.Read(0).size(), 7U);
    bench.port.Write(Enquiry);
    bench.loop.Pass(50ms);
    bench.port.Close();
    bench.port.Open();
    bench.loop.Pass(1s);
    EXPECT_EQ(bench.port.Read(0), "");
}

TEST(SimulatedLine, GoesSilentAtACommandUntilAnotherTillIsThere)
{
    BareLine bench;
    bench.line.SetFaults({.commands = {{CommandFault::Kind::Silent, "$9904!2"}}});
    EXPECT_EQ(bench.Ask(AskName), Name);
    EXPECT_EQ(bench.Ask(MakeFrame("0002", "$9904!2")), Nothing);
    EXPECT_EQ(bench.Ask(MakeFrame("0003", "$9904")), Nothing);
    EXPECT_EQ(bench.line.Memory().mode, '0');
    bench.line.TakeAway();
    EXPECT_EQ(bench.Ask(MakeFrame("0004", "$9904")), Nothing);
    bench.line.Put(FreshLine({Module::KM096}), "TILL07", {});
    EXPECT_EQ(bench.Ask(MakeFrame("0004", "$9900")), MakeFrame("0004", "M$9900!0&TILL07"));
    bench.port.Write(MakeFrame("0005", "$9902"));
    bench.loop.Pass(20ms);
    bench.line.TakeAway();
    EXPECT_EQ(bench.Ask(""), Nothing) << "what was on its way is lost";
    EXPECT_EQ(bench.Ask(MakeFrame("0006", "$9900")), Nothing);
}
