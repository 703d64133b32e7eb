// Which blocks are meant: those that were read, those that are chosen to be written, and how the two differ.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "eeprom/ModuleMemory.h"

namespace kelvora {

/// The blocks that have been read from the addresses which can be written.
std::vector<AddressedBlock> BlocksRead(const ModuleMemory& memory);

/// The identity chosen for each row, as its place among OfferedIdentities.
using IdentityChoices = std::array<std::optional<std::size_t>, WritableAddresses>;

/// The choices that leave all as it is: each row's own identity, none where it cannot be written.
IdentityChoices ChoicesOf(const ModuleMemory& memory);

/// What writing the choices means: a block for each row that was read and has a choice.
std::vector<AddressedBlock> PlanChoices(const ModuleMemory& memory, const IdentityChoices& choices);

/// The addresses of `blocks` whose modules have not been read, so that they cannot be written.
std::vector<std::size_t> AddressesNotRead(const ModuleMemory& memory, std::span<const AddressedBlock> blocks);

/// The others: those of `blocks` whose modules have been read.
std::vector<AddressedBlock> BlocksForTheLine(const ModuleMemory& memory,
                                             std::span<const AddressedBlock> blocks);

/// The addresses of `blocks` whose modules hold other bytes, as last read; those that could not be read do
/// not count.
std::vector<std::size_t> AddressesThatDiffer(const ModuleMemory& memory,
                                             std::span<const AddressedBlock> blocks);

}  // namespace kelvora
