#include "eeprom/ModuleMemory.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "ScriptedPort.h"
#include "fakes/FakePrompt.h"

namespace kelvora {

using Addresses = std::vector<std::size_t>;

class Memory : public testing::Test {
protected:
    Memory()
    {
        protocol.OpenCommsLine();
        memory.onProgress = [this](int value) { progress.push_back(value); };
        memory.onSpeed = [this] { speeds.push_back(port.Settings()); };
        memory.onRepeat = [this] { ++repeats; };
        memory.isInterrupted = [this] { return interrupted && interrupted(); };
    }

    auto TimesWritten(const std::string& bytes) const { return std::ranges::count(port.written, bytes); }

    FakeEventLoop loop;
    ScriptedPort port{loop};
    FakePrompt prompt;
    ModuleProtocol protocol{port, loop, prompt};
    ModuleMemory memory{protocol};
    std::vector<int> progress;
    std::vector<std::string> speeds;
    int repeats = 0;
    std::function<bool()> interrupted;
};

const IdentityBlock SlaveBlock{0xAA, 0x55, 0xBF, 0, 0, 0, 0, 0};

TEST_F(Memory, FindsAndReadsALine)
{
    Attach(port, {CompositeReply, BadgeReply});
    EXPECT_EQ(memory.FindModules(SearchRepeats::UntilInterrupted), SearchOutcome::Found);
    EXPECT_EQ(memory.Count(), 2U);
    EXPECT_EQ(memory.Rows()[0].reply, Bytes("\x00\xF7\x01\x02\x03\x04"));
    EXPECT_EQ(progress, (std::vector{0, 7, 21, 21}));
    EXPECT_EQ(speeds, (std::vector<std::string>{"9600,n,8,1", "9600,n,8,1"}));
    EXPECT_EQ(repeats, 0);
    EXPECT_EQ(TimesWritten(Identify[2]), 1);
    EXPECT_EQ(TimesWritten(Identify[3]), 0) << "nobody stands behind one that does not answer";
    EXPECT_TRUE(memory.ReadEeprom());
    EXPECT_TRUE(prompt.shown.empty());

    port.answers.clear();
    speeds.clear();
    progress.clear();
    EXPECT_EQ(memory.FindModules(SearchRepeats::UntilInterrupted), SearchOutcome::NotFound);
    EXPECT_EQ(speeds, (std::vector<std::string>{"9600,n,8,1", "4800,n,8,1", "2400,n,8,1", "1200,n,8,1"}));
    EXPECT_EQ(progress, (std::vector{0, 1, 2, 3, 4}));
    EXPECT_TRUE(prompt.shown.empty()) << "the search is silent";
    EXPECT_EQ(memory.Count(), 0U) << "what was found before is forgotten";
    EXPECT_FALSE(memory.Rows()[0].block);
}

TEST_F(Memory, SearchEndsWhenAskedOrWhenTheLineIsLost)
{
    interrupted = [] { return true; };
    EXPECT_EQ(memory.FindModules(SearchRepeats::UntilInterrupted), SearchOutcome::Interrupted);
    EXPECT_EQ(speeds.size(), 1U);
    interrupted = {};
    memory.onProgress = [this](int value) {
        if (value == 2)
            port.Close();
    };
    EXPECT_EQ(memory.FindModules(SearchRepeats::UntilInterrupted), SearchOutcome::LineLost);
}

TEST_F(Memory, OddRepliesToIdentifyAreNotRecorded)
{
    Attach(port, {SlaveReply, SlaveReply, SlaveReply, SlaveReply});
    port.answers[Identify[0]] = {Reply(Bytes("\x02\x05\x00\xF7\x01\x02\x03\xF7\x03"))};
    port.answers[Identify[2]] = {Reply(Bytes("\x02\x06\x00\xF7\x01\x02\x03\x04\xF4\x03"))};
    port.answers[Identify[3]] = {{{20, "\x06"}}};
    EXPECT_EQ(memory.FindModules(SearchRepeats::Never), SearchOutcome::Found);
    EXPECT_EQ(memory.Count(), 2U) << "up to the highest that answered";
    EXPECT_TRUE(memory.Rows()[0].reply.empty());
    EXPECT_EQ(TimesWritten(Identify[4]), 1) << "only silence ends the pass";
    for (std::size_t address = 1; address < 5; ++address)
        port.answers.erase(Identify[address]);
    speeds.clear();
    EXPECT_EQ(memory.FindModules(SearchRepeats::Never), SearchOutcome::NotFound);
    EXPECT_EQ(speeds.size(), 4U) << "nor do they end the search at their speed";
}

TEST_F(Memory, NothingIsWrittenPastTheLineOrTheRows)
{
    Attach(port, {});
    for (const std::string& request : Identify)
        port.answers[request] = {Reply(IdentityReply)};
    EXPECT_EQ(memory.FindModules(SearchRepeats::Never), SearchOutcome::Found);
    EXPECT_EQ(port.written.size(), 2 * ModuleAddresses) << "an enquiry and a request each";
    port.written.clear();
    EXPECT_EQ(memory.WriteEeprom(std::vector<AddressedBlock>{{6, SlaveBlock}}), Addresses{6});
    EXPECT_TRUE(port.written.empty());
    protocol.CloseCommsLine();
    EXPECT_EQ(memory.WriteEeprom(std::vector<AddressedBlock>{{0, SlaveBlock}, {1, SlaveBlock}}),
              (Addresses{0, 1}));
    EXPECT_EQ(port.written, std::vector{Enquiry}) << "one try is enough to know";
}

}  // namespace kelvora
