#include <gtest/gtest.h>

#include "bench/FreshLine.h"
#include "bench/SimulatedPort.h"
#include "bench/TerminalFrame.h"
#include "fakes/FakeLineClock.h"

using namespace kelvora;
using namespace kelvora::bench;
using namespace std::chrono_literals;
using namespace std::string_literals;

namespace {

// A simulated line with a port, on virtual time.
struct BareLine {
    BareLine() { port.Open(); }

    /// Sends and returns what has come back after 400 ms.
    std::string Ask(std::string_view bytes)
    {
        port.Write(bytes);
        loop.Pass(400ms);
        return port.Read(0);
    }

    FakeEventLoop loop;
    FakeLineClock clock{loop};
    SimulatedLine line{clock, FreshLine({Module::KM096, Module::MCR123})};
    SimulatedPort port{line};
};

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

TEST(SimulatedLine, ModulesAnswerTheirProtocol)
{
    BareLine bench;
    for (const Exchange& announced : std::vector<Exchange>{
             {"\2\2\3\xF7\xF4\3", "\6\6\2\6\3\3671.00\xEB\3", "identify"},
             {ReadThree, "\6\6\2\12\3\xF9\xAA\x55\0\0\0\3\0\0\6\3"s, "the badge reader's block"},
             {"\2\14\3\xFA\0\xAA\xAA\x55\xBF\0\0\0\0\0\x13\3"s, "\6\6", "write"},
             {ReadThree, "\6\6\2\12\3\xF9\xAA\x55\xBF\0\0\0\0\0\xBA\3"s, "the new block"},
             {"\2\2\3\xF7\xF5\3", "\x15", "a wrong LRC"},
             {"\2\2\3\xF7\xF4\4", "\6\x15", "a wrong ETX"},
             {"\2\2\4\xF7\xF3\3", Nothing, "nobody at address 4"}})
        Check(bench, {{Enquiry, Ready, "ready to receive"}, announced});
    Check(bench, {
                     {"\2\2\3\xF7\xF4\3", Nothing, "a frame that no ENQ announced"},
                     {Enquiry, Ready, ""},
                     {AskName, Name, "the terminal, after an ENQ"},
                     {"?" + Enquiry, Nothing, "ENQ within other bytes"},
                 });
    EXPECT_EQ(DeviceMapOf(bench.line.Memory().modules), (std::vector<std::uint8_t>{214, 23, 4, 191}));
}
