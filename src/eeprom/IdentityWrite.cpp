#include "eeprom/IdentityWrite.h"

#include <algorithm>
#include <iterator>

#include "catalogue/Texts.h"
#include "eeprom/IdentityChoices.h"
#include "eeprom/IdentityCopy.h"
#include "platform/Encoding.h"
#include "platform/LocalTime.h"
#include "platform/PortName.h"
#include "platform/TextLines.h"

namespace kelvora {

namespace {

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

}  // namespace kelvora
