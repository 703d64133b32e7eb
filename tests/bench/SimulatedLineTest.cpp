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

const std::string AskName =
    "\1"
    "0001$9900\3AFD3";
const std::string Name =
    "\1"
    "0001M$9900!0.BENCH TERMINAL\3C586";
const std::string Nothing;

// The writable block of address 3, and the frame that reads it back.
const std::string Enquiry = "\5";
const std::string Ready = "\x11";
const std::string ReadThree = "\2\5\3\xF9\0\xAA\10\x58\3"s;

constexpr auto ByteTime = 1042us;  // at 9600 baud

LineOptions At(int terminal, int modules)
{
    LineOptions options;
    options.terminal.baud = terminal;
    options.modules = {ModuleLinkAt({.baud = modules})};
    return options;
}

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
    Check(bench, {
                     {AskName, Name, "a command"},
                     {AskName, Name, "the last answer again"},
                     {"xyz\1"
                      "0001$99\1"
                      "0002$9902\3"
                      "4171",
                      "\1"
                      "0002M$9902!0!4*214,23,4,3\3C8A4",
                      "SOH begins anew"},
                     {"\1"
                      "0003$9904!2\3"
                      "86FF",
                      "\x15", "a wrong CRC"},
                     {"\1"
                      "0003$9904!2\3"
                      "86fe",
                      "\x15", "a CRC in small letters"},
                     {"\1"
                      "0003$99\n4!2\3"
                      "86FE",
                      "\x15", "a raw control byte"},
                     {"\1"
                      "0003$9904!2\3"
                      "86FE",
                      "\1"
                      "0003E$9904 broken\3"
                      "3082",
                      "a scripted answer"},
                     {"\1"
                      "0004$9904\3"
                      "AC56",
                      "\1"
                      "0004M$9904!0!0\3BF67",
                      "which kept the command from running"},
                     {"\1"
                      "A0FF$1234\3"
                      "2757",
                      "\1"
                      "A0FFM$1234!2\3"
                      "012C",
                      "an unknown command"},
                     {"\1"
                      "0005$9902",
                      Nothing, "half a frame"},
                     {"", Nothing, ""},
                     {"\3"
                      "0000",
                      Nothing, "which is stale when the rest comes"},
                 });
}

TEST(SimulatedLine, TerminalRunsACommandOnceAndLeavesItForANewOne)
{
    BareLine bench;
    bench.line.SetFaults({.delay = 300ms});
    bench.port.Write(
        "\1"
        "0003$9904!2\3"
        "86FE");
    bench.loop.Pass(100ms);
    bench.port.Write(
        "\1"
        "0003$9904!2\3"
        "86FE");
    bench.loop.Pass(260ms);
    EXPECT_EQ(bench.port.Read(0),
              "\1"
              "0003M$9904!0!2\3B698")
        << "a repeat while it runs is no second command";
    EXPECT_EQ(bench.Ask(""), "");

    bench.port.Write(
        "\1"
        "0004$9904\3"
        "AC56");
    bench.loop.Pass(200ms);
    EXPECT_EQ(bench.Ask(AskName), Name) << "the command in flight is never answered";
    EXPECT_EQ(bench.line.Memory().mode, '2');
}

TEST(SimulatedLine, NewCommandCutsTheAnswerBeforeIt)
{
    BareLine bench;
    bench.port.Write(AskName);
    bench.loop.Pass(24 * ByteTime);
    bench.port.Write(
        "\1"
        "0004$9904\3"
        "AC56");
    bench.loop.Pass(1s);
    EXPECT_EQ(bench.port.Read(0), Name.substr(0, 24) +
                                      "\1"
                                      "0004M$9904!0!0\3BF67");
}

TEST(SimulatedLine, ModulesAnswerTheirProtocol)
{
    BareLine bench;
    Check(bench, {
                     {Enquiry, Ready, "ready to receive"},
                     {"\2\2\3\xF7\xF4\3",
                      "\6\6\2\6\3\xF7"
                      "1.00\xEB\3",
                      "identify"},
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

TEST(SimulatedLine, SlowModuleRepliesAfterTheHandshake)
{
    BareLine bench(FreshLine({Module::KM096, Module::MCR123}), At(9600, 1200));
    bench.port.SetSettings("1200,n,8,1");
    bench.port.Write(Enquiry);
    bench.loop.Pass(20ms);
    EXPECT_EQ(bench.port.Read(0), Ready);
    bench.port.Write(ReadThree);
    bench.loop.Pass(125ms);
    EXPECT_EQ(bench.port.Read(0), "\6");
    bench.loop.Pass(120ms);
    EXPECT_EQ(bench.port.Read(0), "\2\12\3\xF9\xAA\x55\0\0\0\3\0\0\6\3"s);
}

TEST(SimulatedLine, OnlyTheRightSpeedIsHeard)
{
    BareLine bench(FreshLine({Module::ICCR}), At(4800, 2400));
    const std::vector<std::pair<const char*, std::vector<std::string>>> settings{{"9600,n,8,1", {"", ""}},
                                                                                 {"4800,n,8,1", {Name, ""}},
                                                                                 {"4800,e,8,1", {"", ""}},
                                                                                 {"2400,n,8,1", {"", Ready}}};
    for (const auto& [text, heard] : settings) {
        bench.port.SetSettings(text);
        EXPECT_EQ(bench.Ask(AskName), heard[0]) << text;
        EXPECT_EQ(bench.Ask(Enquiry), heard[1]) << text;
    }
}

TEST(SimulatedLine, BytesTakeTheirTime)
{
    BareLine bench;
    std::vector<std::size_t> waiting;
    bench.port.onBytes = [&] { waiting.push_back(bench.port.BytesWaiting()); };
    bench.port.Write(Enquiry);
    bench.loop.Pass(2 * ByteTime - 1us);
    EXPECT_EQ(bench.port.BytesWaiting(), 0U);
    bench.loop.Pass(1us);
    EXPECT_EQ(bench.port.Read(0), Ready);
    EXPECT_EQ(bench.Ask(AskName), Name);
    EXPECT_EQ(waiting, (std::vector<std::size_t>{1, 14, 28, 33}));

    bench.port.Write(AskName);
    bench.loop.Pass((AskName.size() + Name.size()) * ByteTime - 100us);
    EXPECT_EQ(bench.port.BytesWaiting(), 28U) << "the last run is not complete";
    bench.port.Close();
    bench.port.Open();
    EXPECT_EQ(bench.Ask(""), "") << "what was on its way to a closed port is lost";
}

TEST(SimulatedLine, IsCutAfterAnExactByte)
{
    struct Cut {
        FaultPlan plan;
        std::size_t heard;
        bool isOpen;
        char mode;
    };
    const std::string setMode =
        "\1"
        "0003$9904!2\3"
        "86FE";
    const std::vector<Cut> cuts{
        {{.silentAfter = {.toDevice = 16}}, 0, true, '0'}, {{.silentAfter = {.toDevice = 17}}, 0, true, '2'},
        {{.silentAfter = {.toHost = 7}}, 7, true, '2'},    {{.awayAfter = {.toDevice = 16}}, 0, false, '0'},
        {{.awayAfter = {.toHost = 0}}, 0, false, '2'},     {{.awayAfter = {.toHost = 21}}, 20, true, '2'},
    };
    for (const Cut& cut : cuts) {
        BareLine bench;
        std::size_t heard = 0;
        bench.port.onBytes = [&] { heard = bench.port.BytesWaiting(); };
        bench.line.SetFaults(cut.plan);
        bench.Ask(setMode);
        EXPECT_EQ(heard, cut.heard);
        EXPECT_EQ(bench.port.IsOpen(), cut.isOpen);
        EXPECT_EQ(bench.port.Failure(), cut.isOpen ? PortFailure::None : PortFailure::Missing);
        EXPECT_EQ(bench.port.Open(), cut.isOpen);
        EXPECT_EQ(bench.line.Memory().mode, cut.mode);
        bench.line.SetFaults({});
        EXPECT_TRUE(bench.port.Open());
        EXPECT_EQ(bench.Ask(AskName), Name) << "the cut is healed";
    }
}

TEST(SimulatedLine, RefusesFramesAndPorts)
{
    BareLine bench;
    bench.line.SetFaults({.naks = 2});
    Check(bench, {{AskName, "\x15", "the terminal"},
                  {Enquiry, Ready, ""},
                  {ReadThree, "\x15", "a module"},
                  {AskName, Name, "two were refused"}});
    bench.port.Close();
    bench.port.refusal = PortFailure::InUse;
    EXPECT_FALSE(bench.port.Open());
    EXPECT_EQ(bench.port.Failure(), PortFailure::InUse);
    EXPECT_EQ(bench.Ask(AskName), "") << "nothing leaves a closed port";
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

TEST(SimulatedLine, TellsWhoHoldsTheTerminal)
{
    BareLine bench;
    std::vector<bool> told;
    bench.line.onHeld = [&] { told.push_back(bench.line.IsHeld()); };
    bench.line.SetFaults({.commands = {{CommandFault::Kind::Status, "$9911", 1, {}, "2"}}});
    std::uint32_t exchange = 0;
    for (const char* const command : {"$9911", "$9918", "$9918", "$99111", "$9911", "$9918"})
        bench.Ask(MakeFrame(Hex(++exchange, 4), command));
    EXPECT_EQ(told, (std::vector<bool>{true, false, true}));
    bench.line.Restart();
    EXPECT_FALSE(bench.line.IsHeld());
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
