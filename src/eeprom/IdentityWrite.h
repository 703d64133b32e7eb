// Writing identities with the care that it needs: what will be written is planned and shown, the user is
// asked, and what the modules hold now is saved, before the first byte changes.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "catalogue/MessageCatalogue.h"
#include "eeprom/ModuleMemory.h"
#include "eeprom/WriteQuestion.h"
#include "platform/Files.h"
#include "platform/Prompt.h"

namespace kelvora {

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

}  // namespace kelvora
