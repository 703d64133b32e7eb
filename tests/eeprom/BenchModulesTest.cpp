// The module protocol against simulated modules, which frame and judge for themselves.
#include <gtest/gtest.h>

#include <algorithm>

#include "comms/LineDrivers.h"
#include "eeprom/IdentityChoices.h"
#include "fakes/BenchLine.h"
#include "fakes/FakePrompt.h"

namespace kelvora {

using Names = std::vector<std::string>;
using bench::Module;

const IdentityBlock ChipCardBlock{0xAA, 0x55, 0, 0, 8, 0, 0, 0};

struct BenchModules {
    explicit BenchModules(const std::vector<Module>& modules, int baud = 9600)
        : bench(loop, {.modules = {bench::ModuleLinkAt({.baud = baud})}}, modules)
    {
        protocol.OpenCommsLine();
        memory.onRepeat = [this] { repeated = true; };
        memory.isInterrupted = [this] { return repeated; };
        found = memory.FindModules(SearchRepeats::UntilInterrupted);
    }

    Names Identities() const
    {
        Names names;
        for (std::size_t i = 0; i < memory.Count(); ++i)
            names.emplace_back(memory.Rows().at(i).identity.name);
        return names;
    }

    /// Gives all modules that can be written another identity; the addresses that failed.
    std::vector<std::size_t> Write()
    {
        std::vector<AddressedBlock> blocks;
        for (std::size_t i = 0; i < std::min(memory.Count(), WritableAddresses); ++i)
            blocks.push_back({i, ChipCardBlock});
        return memory.WriteEeprom(blocks);
    }

    FakeEventLoop loop;
    BenchLine bench;
    FakePrompt prompt;
    ModuleProtocol protocol{bench.port, loop, prompt};
    ModuleMemory memory{protocol};
    bool repeated = false;
    SearchOutcome found;
};

TEST(BenchModules, EveryLineIsFoundReadAndWrittenAtEverySpeed)
{
    using enum Module;
    const std::vector<std::pair<std::vector<Module>, Names>> lines{
        {{KM096}, {"KM96CM", "LCD", "KEYLOCK"}},
        {{KM064}, {"KM64"}},
        {{MCR12}, {"MCR 1+2"}},
        {{MCR23}, {"MCR 2+3"}},
        {{MCR123}, {"MCR 1+2+3"}},
        {{ICCR}, {"ICCR"}},
        {{KM096, KM064, MCR123, ICCR}, {"KM96CM", "LCD", "KEYLOCK", "KM64", "MCR 1+2+3", "ICCR"}},
        {{KM096, KM064, MCR12, ICCR, MCR23},
         {"KM96CM", "LCD", "KEYLOCK", "KM64", "MCR 1+2", "ICCR", "MCR 2+3"}}};
    for (const int baud : {9600, 4800, 2400, 1200})
        for (const auto& [modules, names] : lines) {
            BenchModules line(modules, baud);
            SCOPED_TRACE(names.front() + " at " + std::to_string(baud));
            EXPECT_EQ(line.found, baud == 9600 ? SearchOutcome::Found : SearchOutcome::Interrupted);
            EXPECT_TRUE(line.memory.ReadEeprom());
            EXPECT_EQ(line.Identities(), names);
            const std::size_t written = std::min<std::size_t>(names.size(), 6);
            EXPECT_EQ(BlocksRead(line.memory).size(), written);
            const std::vector<bench::IdentityBytes> before = line.bench.line.Memory().modules;
            // At 1200 baud no module can acknowledge in time what it has written.
            EXPECT_EQ(line.Write().size(), baud == 1200 ? written : 0U);
            EXPECT_EQ(line.prompt.TakeBodies(), Names(baud == 1200 ? written : 0, "No response from MID"));
            const auto& now = line.bench.line.Memory().modules;
            for (std::size_t i = 0; i < now.size(); ++i)
                EXPECT_EQ(now[i], i < 6 ? ChipCardBlock : before[i]) << i;
            EXPECT_TRUE(line.memory.ReadEeprom()) << "the late acknowledgements are no answers";
            for (std::size_t i = 0; i < names.size(); ++i)
                EXPECT_EQ(line.memory.Rows().at(i).block, now[i]) << i;
            EXPECT_TRUE(line.prompt.TakeBodies().empty());
        }
}

TEST(BenchModules, FaultyModulesAreToldAndReadAsTheyAre)
{
    using std::chrono::milliseconds;
    const Names none(2, "UNKNOWN");
    const Names both{"KM64", "MCR 1+2"};
    const Names second{"UNKNOWN", "MCR 1+2"};
    const std::string silence = "No response from MID";
    const std::string nak = "MID NAK response indicates LRC error";
    const std::string checksum = "checksum error on received message";
    const std::string corrupted = "corrupted data packet received";
    const Names twice(2, silence);
    const auto check = [&](const std::string& reason, const bench::FaultPlan& faults, const Names& readErrors,
                           const Names& identities, std::size_t failedWrites, const Names& writeErrors,
                           bool isWritten, bool hasLine) {
        SCOPED_TRACE(reason);
        BenchModules reading({Module::KM064, Module::MCR12});
        reading.bench.line.SetFaults(faults);
        EXPECT_EQ(reading.memory.ReadEeprom(), readErrors.empty() && hasLine);
        EXPECT_EQ(reading.prompt.TakeBodies(), readErrors);
        EXPECT_EQ(reading.Identities(), identities);
        EXPECT_EQ(reading.memory.HasLine(), hasLine);

        BenchModules writing({Module::KM064, Module::MCR12});
        ASSERT_TRUE(writing.memory.ReadEeprom());
        writing.bench.line.SetFaults(faults);
        EXPECT_EQ(writing.Write().size(), failedWrites);
        EXPECT_EQ(writing.prompt.TakeBodies(), writeErrors);
        EXPECT_EQ(writing.bench.line.Memory().modules[1] == ChipCardBlock, isWritten);
        if (!hasLine)
            return;
        writing.bench.line.SetFaults({});
        EXPECT_TRUE(writing.memory.ReadEeprom());
        for (std::size_t i = 0; i < 2; ++i)
            EXPECT_EQ(writing.memory.Rows().at(i).block, writing.bench.line.Memory().modules[i]);
    };
    check("slow", {.delay = milliseconds(30)}, {}, both, 0, {}, true, true);
    check("too slow", {.delay = milliseconds(60)}, {silence}, none, 2, twice, true, true);
    check("NAK", {.naks = 1}, {nak}, none, 1, {nak}, true, true);
    check("wrong LRC", {.wrongLrcs = 1}, {checksum}, second, 0, {}, true, true);
    check("wrong length", {.wrongLengths = 1}, {corrupted}, second, 0, {}, true, true);
    check("silent", {.silentAfter = {.toHost = 0}}, {silence}, none, 2, twice, false, true);
    check("away", {.awayAfter = {.toHost = 1}}, {}, none, 2, {}, false, false);
}

TEST(BenchModules, ATerminalIsNoModuleAndTakesNoHarm)
{
    BenchModules line({});
    EXPECT_EQ(line.found, SearchOutcome::NotFound);
    line.protocol.Close();
    Comms comms(line.loop, {&line.bench.link, nullptr, nullptr, nullptr});
    EXPECT_TRUE(ScanWithUpload(comms, {1, "9600,n,8,1", 0}, {}).IsDone());
}

TEST(BenchModules, NobodySharesALineWithTheTerminalsLink)
{
    BenchModules line({Module::KM064});
    EXPECT_FALSE(line.bench.link.Open("9600,n,8,1"));
    EXPECT_EQ(line.bench.link.Failure(), PortFailure::InUse);
    line.protocol.CloseCommsLine();
    ASSERT_TRUE(line.bench.link.Open("9600,n,8,1"));
    EXPECT_FALSE(line.protocol.OpenCommsLine());
    line.protocol.Close();
    EXPECT_TRUE(line.bench.port.IsOpen()) << "what another has opened stays open";
    line.bench.link.Close();
    EXPECT_TRUE(line.protocol.OpenCommsLine());
}

}  // namespace kelvora
