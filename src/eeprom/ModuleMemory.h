// The modules of a line and their identity blocks: finds the modules, reads the blocks, writes them. The
// requests are told in eeprom/ModuleRequest.h.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "eeprom/IdentityBlock.h"
#include "eeprom/ModuleProtocol.h"

namespace kelvora {

/// Modules have the addresses 0 to 6, without gaps.
inline constexpr std::size_t ModuleAddresses = 7;

/// Those that are shown and written: 0 to 5.
inline constexpr std::size_t WritableAddresses = 6;

/// What the progress of a search counts up to.
inline constexpr int SearchSteps = 21;

struct ModuleRow {
    std::string reply;                   ///< to identify; empty where no module answered
    std::optional<IdentityBlock> block;  ///< as last read
    DecodedIdentity identity;
};

/// A block and the address of the module that it is for, or was read from.
struct AddressedBlock {
    std::size_t address = 0;
    IdentityBlock block{};

    friend bool operator==(const AddressedBlock&, const AddressedBlock&) = default;
};

enum class SearchOutcome { Found, NotFound, Interrupted, LineLost };

/// Modules that answer below 9600 baud are searched again and again until the user interrupts, or only once.
enum class SearchRepeats { UntilInterrupted, Never };

/// Whether `isInterrupted` ends a reading too.
enum class ReadStops { Never, WhenAsked };

class ModuleMemory {
public:
    explicit ModuleMemory(ModuleProtocol& protocol) : protocol_(protocol) {}

    /// Forgets all rows and searches at 9600, 4800, 2400 and 1200 baud, silently. Once modules have answered
    /// the line keeps their speed; Interrupted and LineLost keep what was found too.
    SearchOutcome FindModules(SearchRepeats repeats);

    /// Reads the blocks of all addresses up to the highest found, showing each error. Returns whether all
    /// could be read; an address that takes no request, or a line that is lost, ends the reading.
    bool ReadEeprom(ReadStops stops = ReadStops::Never);

    /// Writes blocks, showing each error; after a module that failed the others have their turn once the line
    /// is quiet. Returns the addresses that failed, in the order of `blocks`. Addresses above 5 always do.
    std::vector<std::size_t> WriteEeprom(std::span<const AddressedBlock> blocks);

    /// Whether the line is open; it is lost where it is no longer.
    bool HasLine() const { return protocol_.IsOpen(); }

    /// By address.
    const std::array<ModuleRow, ModuleAddresses>& Rows() const { return rows_; }

    /// How many addresses there are up to the highest that answered; 0 for none.
    std::size_t Count() const;

    /// 0 to SearchSteps.
    std::function<void(int)> onProgress;
    /// The search has set another speed.
    std::function<void()> onSpeed;
    /// The search has found modules and repeats.
    std::function<void()> onRepeat;
    /// Whether the user has asked the search to stop.
    std::function<bool()> isInterrupted;

private:
    struct Pass {
        bool found = false;
        std::optional<SearchOutcome> end;  ///< of the whole search, where it must not go on
    };

    SearchOutcome SearchSpeeds(SearchRepeats repeats, int& answeredAt);
    Pass SearchAddresses();
    bool Identify(std::size_t address);
    std::optional<IdentityBlock> ReceiveBlock();
    std::optional<SearchOutcome> EndOfSearch() const;
    void SetSpeed(int speed);
    void SetProgress(int progress);

    ModuleProtocol& protocol_;
    std::array<ModuleRow, ModuleAddresses> rows_{};
    int progress_ = 0;
};

}  // namespace kelvora
