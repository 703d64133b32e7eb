#include "eeprom/IdentityChoices.h"

#include <algorithm>
#include <iterator>

namespace kelvora {

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

std::vector<AddressedBlock> BlocksRead(const ModuleMemory& memory)
{
    std::vector<AddressedBlock> blocks;
    for (std::size_t address = 0; address < WritableAddresses; ++address)
        if (const auto& block = memory.Rows().at(address).block)
            blocks.push_back({address, *block});
    return blocks;
}

}  // namespace kelvora
