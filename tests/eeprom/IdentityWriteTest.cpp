#include "eeprom/IdentityChoices.h"
#include "eeprom/IdentityTexts.h"
#include "eeprom/IdentityWrite.h"

#include <gmock/gmock.h>

#include "ScriptedPort.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakePrompt.h"

namespace kelvora {

constexpr auto Afternoon = std::chrono::local_days{std::chrono::year{2025} / 1 / 31} +
                           std::chrono::hours(14) + std::chrono::minutes(25) + std::chrono::seconds(30);

const std::string CopyText =
    "Kelvora module identities\r\nDate 2025-01-31 14:25:30\r\nLine COM2: 9600,n,8,1\r\n"
    "0: AA 55 D6 17 FF FF 04 00\r\n2: AA 55 00 00 00 02 00 00\r\n";
const std::string CopyPath = "/data/identities-COM2-20250131-142530.txt";

TEST(IdentityCopy, WhatIsWrittenReadsBack)
{
    const IdentityCopy copy{
        "2025-01-31 14:25:30",
        "COM2: 9600,n,8,1",
        {{0, {0xAA, 0x55, 0xD6, 0x17, 0xFF, 0xFF, 4, 0}}, {2, {0xAA, 0x55, 0, 0, 0, 2, 0, 0}}}};
    EXPECT_EQ(WriteIdentityCopy(copy), CopyText);
    EXPECT_EQ(ReadIdentityCopy(CopyText), copy);
    std::string bare = CopyText;
    std::erase(bare, '\r');
    EXPECT_EQ(ReadIdentityCopy(bare + "\n\n"), copy);
}

TEST(IdentityCopy, ErrorNamesTheLine)
{
    const std::string head = "Kelvora module identities\nDate x\nLine y\n";
    const std::string block = ": AA 55 D6 17 FF FF 04 00\n";
    const auto check = [&](const std::string& text, std::size_t line, CopyExpected expected) {
        EXPECT_THAT([&] { ReadIdentityCopy(text); },
                    testing::Throws<IdentityCopyError>(
                        testing::AllOf(testing::Property(&IdentityCopyError::Line, line),
                                       testing::Property(&IdentityCopyError::ExpectedHere, expected))))
            << text;
    };
    check("", 1, CopyExpected::Header);
    check("\xFF\xFE", 1, CopyExpected::Header);
    check("Kelvora module identities 2\n", 1, CopyExpected::Header);
    check("Kelvora module identities\n\nLine y\n", 2, CopyExpected::Date);
    check("Kelvora module identities\nDate x\n0" + block, 3, CopyExpected::Line);
    check(head, 4, CopyExpected::Block);
    check(head + "6" + block, 4, CopyExpected::Block);
    check(head + "/" + block, 4, CopyExpected::Block);
    check(head + "0" + block + "1: AA 55 D6 17 FF FF 04 0", 5, CopyExpected::Block);
    check(head + "0" + block + "\n1" + block, 5, CopyExpected::Block);
    check(head + "1" + block + "0" + block, 5, CopyExpected::NextAddress);
    check(head + "1" + block + "1" + block, 5, CopyExpected::NextAddress);
}

// A line with a composite keyboard, a module that cannot be read, and a badge reader.
class IdentityWrite : public testing::Test {
protected:
    IdentityWrite()
    {
        protocol.OpenCommsLine();
        Attach(port, {CompositeReply, SlaveReply, BadgeReply});
        port.answers[ReadRequest[1]] = {{{20, "\x06"}}};
        memory.FindModules(SearchRepeats::Never);
        memory.ReadEeprom();
        port.written.clear();
    }

    WriteResult Write(const std::vector<AddressedBlock>& blocks)
    {
        const auto ask = [this](const WriteQuestion& question) {
            asked.push_back(question);
            return yes;
        };
        return WriteIdentities(
            memory, blocks,
            {prompt, catalogue, files, "/data", 2, port.Settings(), Afternoon, ask, {"Mind this.", ""}});
    }

    FakeEventLoop loop;
    ScriptedPort port{loop};
    FakePrompt prompt;
    FakeFiles files;
    MessageCatalogue catalogue;
    ModuleProtocol protocol{port, loop, prompt};
    ModuleMemory memory{protocol};
    bool yes = false;
    std::vector<WriteQuestion> asked;
};

using Blocks = std::vector<AddressedBlock>;

const Blocks ToSlave{{2, {0xAA, 0x55, 0xBF, 0, 0, 0, 0, 0}}};

TEST_F(IdentityWrite, RowsWithoutAChoiceAreNotPlanned)
{
    IdentityChoices choices = ChoicesOf(memory);
    EXPECT_EQ(choices, (IdentityChoices{0, {}, 5}));
    choices[1] = 3;
    choices[2] = 3;
    EXPECT_EQ(PlanChoices(memory, choices), (Blocks{{0, {0xAA, 0x55, 0xD6, 0x17, 0, 0, 4, 0}}, ToSlave[0]}));
    EXPECT_EQ(AddressList(AddressesNotRead(memory, Blocks{{0, {}}, {1, {}}, {5, {}}})), "1, 5");
    const Blocks badge{{0, {}}, {1, {}}, {2, {0xAA, 0x55, 0, 0, 0, 2, 0, 0}}};
    EXPECT_EQ(AddressList(AddressesThatDiffer(memory, badge)), "0");
}

TEST_F(IdentityWrite, AsksAndSavesBeforeItWrites)
{
    EXPECT_EQ(Write(ToSlave).outcome, WriteOutcome::Declined);
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_EQ(asked[0].text,
              "Mind this.\r\nA wrong identity makes a module inaccessible to the POS unit.\r\n"
              "Write these bytes to the modules?");
    EXPECT_EQ(asked[0].table,
              "  Address 0: KM96CM, not written\r\n"
              "    now            AA 55 D6 17 FF FF 04 00\r\n"
              "* Address 2: MCR 2+3 >> KM64, changed\r\n"
              "    now            AA 55 00 00 00 02 00 00\r\n"
              "    to be written  AA 55 BF 00 00 00 00 00\r\n"
              "                         ^^       ^^\r\n\r\n"
              "* marks the modules whose bytes change, ^^ the bytes.");
    EXPECT_TRUE(port.written.empty());
    EXPECT_TRUE(files.content.empty());

    const std::string request = Bytes("\x02\x0C\x02\xFA\x00\xAA\xAA\x55\xBF\x00\x00\x00\x00\x00\x12\x03");
    port.answers[request] = {{{20, "\x06"}}};
    yes = true;
    const WriteResult result = Write(ToSlave);
    EXPECT_EQ(result.outcome, WriteOutcome::Written);
    EXPECT_EQ(result.copyPath, CopyPath);
    EXPECT_EQ(files.content[CopyPath], CopyText);
    EXPECT_EQ(port.written, (std::vector{Enquiry, request}));

    port.answers[request] = {{{20, "\x15"}}};
    const WriteResult failed = Write(ToSlave);
    EXPECT_EQ(failed.outcome, WriteOutcome::Failed);
    EXPECT_EQ(failed.failed, std::vector<std::size_t>{2});
    EXPECT_EQ(failed.copyPath, "/data/identities-COM2-20250131-142530-2.txt") << "no copy is overwritten";
    EXPECT_EQ(Write(ToSlave).copyPath, "/data/identities-COM2-20250131-142530-3.txt");
}

TEST_F(IdentityWrite, WhatIsWrittenAgainIsToldFromWhatChanges)
{
    Write({{0, CompositeBlock}, {2, *memory.Rows()[2].block}});
    EXPECT_EQ(asked.at(0).table.substr(0, asked[0].table.rfind("\r\n\r\n")),
              "* Address 0: KM96CM, changed\r\n"
              "    now            AA 55 D6 17 FF FF 04 00\r\n"
              "    to be written  AA 55 D6 17 00 00 04 00\r\n"
              "                               ^^ ^^\r\n"
              "  Address 2: MCR 2+3, same bytes, written again\r\n"
              "    now            AA 55 00 00 00 02 00 00\r\n"
              "    to be written  AA 55 00 00 00 02 00 00");
    EXPECT_EQ(BlocksForTheLine(memory, Blocks{{1, {}}, ToSlave[0], {5, {}}}), ToSlave);
}

TEST_F(IdentityWrite, NothingIsWrittenWhenNothingCanBeSaved)
{
    files.unwritable.insert(CopyPath);
    yes = true;
    EXPECT_EQ(Write(ToSlave).outcome, WriteOutcome::NotSaved);
    EXPECT_TRUE(port.written.empty());
    EXPECT_EQ(prompt.shown.back().body,
              "The present EEPROM data could not be saved, so nothing was written:\r\n" + CopyPath +
                  "\r\nNo space left on device");
}

}  // namespace kelvora
