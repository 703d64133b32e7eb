// Writing identities with the care that it needs: what will be written is planned and shown, the user is
// asked, and what the modules hold now is saved, before the first byte changes.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "app/MessageCatalogue.h"
#include "eeprom/IdentityCopy.h"
#include "eeprom/ModuleMemory.h"
#include "eeprom/WriteQuestion.h"
#include "platform/Files.h"
#include "platform/Prompt.h"

namespace kelvora {

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

/// "0, 2, 3".
std::string AddressList(std::span<const std::size_t> addresses);

/// What the write needs besides the line.
struct WriteSurroundings {
    Prompt& prompt;
    const MessageCatalogue& catalogue;
    Files& files;
    std::string folder;  ///< where the copy is saved; made when there is none
    int port = 1;        ///< COM1 = 1
    std::string settings;
    std::chrono::local_seconds time{};
    std::function<bool(const WriteQuestion&)> ask;  ///< the user, true for Yes alone; must be set
    std::vector<std::string> remarks{};             ///< what the question tells besides
    std::function<void()> onWrite{};                ///< called before the first byte is written; may be empty
};

enum class WriteOutcome {
    Declined,  ///< the user said no: nothing was written
    NotSaved,  ///< the copy could not be saved, and the user was told: nothing was written
    Written,
    Failed,  ///< some were not acknowledged, or not even sent
};

struct WriteResult {
    WriteOutcome outcome = WriteOutcome::Declined;
    std::string copyPath;             ///< of the saved copy, where there is one
    std::vector<std::size_t> failed;  ///< addresses
};

/// Asks, showing each row's bytes now and to be written; saves the present bytes; writes. Every block's
/// module must have been read.
WriteResult WriteIdentities(ModuleMemory& memory, std::span<const AddressedBlock> blocks,
                            const WriteSurroundings& surroundings);

/// Those of `blocks` whose modules have acknowledged them.
std::vector<AddressedBlock> Acknowledged(std::span<const AddressedBlock> blocks, const WriteResult& result);

/// When and where a copy was saved.
std::string DescribeCopy(const MessageCatalogue& catalogue, const IdentityCopy& copy);

/// The addresses of a copy that cannot be written; empty for none.
std::string DescribeLeftOut(const MessageCatalogue& catalogue, std::span<const std::size_t> addresses);

/// What a rejected copy says to the user: the line, and what was expected there.
std::string DescribeCopyError(const MessageCatalogue& catalogue, const IdentityCopyError& error);

}  // namespace kelvora
