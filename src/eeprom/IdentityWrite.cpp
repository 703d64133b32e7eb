#include "eeprom/IdentityWrite.h"

#include <algorithm>
#include <iterator>

#include "app/ShowMessage.h"
#include "platform/Encoding.h"
#include "platform/LocalTime.h"
#include "platform/PortName.h"

namespace kelvora {

namespace {

constexpr std::string_view LineEnd = "\r\n";

// In the order of CopyExpected.
constexpr std::array ExpectedTexts{Message::EepromCopyHeader, Message::EepromCopyDate,
                                   Message::EepromCopyLine, Message::EepromCopyBlock,
                                   Message::EepromCopyNextAddress};
static_assert(ExpectedTexts.size() == static_cast<std::size_t>(CopyExpected::NextAddress) + 1);

std::string SaveCopy(const ModuleMemory& memory, const WriteSurroundings& surroundings)
{
    Files& files = surroundings.files;
    files.MakeFolder(surroundings.folder);
    std::string path = NewCopyPath(files, surroundings.folder, surroundings.port, surroundings.time);
    files.Write(path, WriteIdentityCopy({LocalTimeText(surroundings.time),
                                         PortName(surroundings.port) + ": " + surroundings.settings,
                                         BlocksRead(memory)}));
    return path;
}

}  // namespace

IdentityChoices ChoicesOf(const ModuleMemory& memory)
{
    IdentityChoices choices;
    for (std::size_t address = 0; address < choices.size(); ++address)
        choices.at(address) = memory.Rows().at(address).identity.offered;
    return choices;
}

std::vector<AddressedBlock> PlanChoices(const ModuleMemory& memory, const IdentityChoices& choices)
{
    std::vector<AddressedBlock> blocks;
    for (std::size_t address = 0; address < choices.size(); ++address)
        if (const auto choice = choices.at(address); choice && memory.Rows().at(address).block)
            blocks.push_back({address, OfferedIdentities.at(*choice).block});
    return blocks;
}

std::vector<std::size_t> AddressesNotRead(const ModuleMemory& memory, std::span<const AddressedBlock> blocks)
{
    std::vector<std::size_t> addresses;
    for (const AddressedBlock& wanted : blocks)
        if (!memory.Rows().at(wanted.address).block)
            addresses.push_back(wanted.address);
    return addresses;
}

std::vector<AddressedBlock> BlocksForTheLine(const ModuleMemory& memory,
                                             std::span<const AddressedBlock> blocks)
{
    std::vector<AddressedBlock> kept;
    std::ranges::copy_if(blocks, std::back_inserter(kept), [&](const AddressedBlock& block) {
        return memory.Rows().at(block.address).block.has_value();
    });
    return kept;
}

std::vector<std::size_t> AddressesThatDiffer(const ModuleMemory& memory,
                                             std::span<const AddressedBlock> blocks)
{
    std::vector<std::size_t> addresses;
    for (const AddressedBlock& wanted : blocks)
        if (const auto& held = memory.Rows().at(wanted.address).block; held && *held != wanted.block)
            addresses.push_back(wanted.address);
    return addresses;
}

std::string AddressList(std::span<const std::size_t> addresses)
{
    std::string text;
    for (const std::size_t address : addresses)
        text.append(text.empty() ? "" : ", ").append(std::to_string(address));
    return text;
}

WriteResult WriteIdentities(ModuleMemory& memory, std::span<const AddressedBlock> blocks,
                            const WriteSurroundings& surroundings)
{
    const auto& catalogue = surroundings.catalogue;
    if (!surroundings.ask(AskAboutWrite(memory, blocks, catalogue, surroundings.remarks)))
        return {};
    WriteResult result;
    try {
        result.copyPath = SaveCopy(memory, surroundings);
    } catch (const FileError& error) {
        std::string text = catalogue.Caption(Message::EepromNotSaved);
        text.append(LineEnd).append(TextFromPath(error.Path())).append(LineEnd).append(error.what());
        surroundings.prompt.Show(ProductName, text, {BoxIcon::Exclamation});
        return {WriteOutcome::NotSaved, {}, {}};
    }
    if (surroundings.onWrite)
        surroundings.onWrite();
    result.failed = memory.WriteEeprom(blocks);
    result.outcome = result.failed.empty() ? WriteOutcome::Written : WriteOutcome::Failed;
    return result;
}

std::vector<AddressedBlock> Acknowledged(std::span<const AddressedBlock> blocks, const WriteResult& result)
{
    std::vector<AddressedBlock> acknowledged;
    std::ranges::copy_if(blocks, std::back_inserter(acknowledged), [&](const AddressedBlock& block) {
        return std::ranges::find(result.failed, block.address) == result.failed.end();
    });
    return acknowledged;
}

std::string DescribeCopy(const MessageCatalogue& catalogue, const IdentityCopy& copy)
{
    return catalogue.Word(Message::EepromCopyOf) + copy.date + ", " + copy.line;
}

std::string DescribeLeftOut(const MessageCatalogue& catalogue, std::span<const std::size_t> addresses)
{
    return addresses.empty() ? std::string()
                             : catalogue.Word(Message::EepromLeftOut) + AddressList(addresses);
}

std::string DescribeCopyError(const MessageCatalogue& catalogue, const IdentityCopyError& error)
{
    std::string text = catalogue.Caption(Message::EepromBadCopy);
    text.append(LineEnd).append(catalogue.Word(Message::LineWord)).append(std::to_string(error.Line()));
    text.append(": ").append(catalogue.Word(Message::ExpectedWord));
    return text + catalogue.Caption(ExpectedTexts.at(static_cast<std::size_t>(error.ExpectedHere())));
}

}  // namespace kelvora
