// What the terminal does on a command, and what it replies:
//
//   $9900     is the terminal there: its name          0FB0      open the flash: its size
//   $9918     hold the line                            20        next block: address, data, data
//   $9902     device map: count, codes                 0F02      CRC-32 of the flash
//   $9911     release the line                         0FB1      stage 64 bytes at an address; bare: no more
//   $9904     query the mode, with "!m" set it         0FB3      close; with a CRC-32 commit; bare: discard
//   000       block address 0
//
// A reply is the command's name and counted fields, the first of them the status "0"; what is unknown or out
// of order is answered with the name and "!2".
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bench/LineState.h"

namespace kelvora::bench {

/// What a simulated terminal calls itself unless it has a name of its own.
inline constexpr std::string_view DefaultTerminalName = "BENCH TERMINAL";

class TerminalCommands {
public:
    /// `memory` outlives this.
    explicit TerminalCommands(LineState& memory) : memory_(memory) {}

    /// Runs a command text and gives the reply text.
    std::string Run(std::string_view command);
    /// The reply text to a command that is not run, with a status alone.
    static std::string Refuse(std::string_view command, std::string_view status);
    /// Whether there is such a command, whatever follows its name.
    static bool Knows(std::string_view command);

    /// What the terminal calls itself.
    void SetName(std::string name) { name_ = std::move(name); }

    /// Whether a host holds the line: `$9918` has come and `$9911` not since.
    bool IsHeld() const { return isHeld_; }

    /// What a cut of the power forgets: that the line is held, an open flash, what is staged, the block
    /// address.
    void Restart();

    /// Called when the memory has changed, before that is answered; false when it cannot be kept, which
    /// undoes the change and refuses the command.
    std::function<bool()> onStored;
    /// Called when the line is held or released.
    std::function<void()> onHeld;

private:
    using Fields = std::optional<std::vector<std::string>>;  ///< nothing when out of order
    struct Command {
        std::string_view name;
        Fields (TerminalCommands::*run)(std::string_view argument);
    };

    Fields Attention(std::string_view argument);
    Fields Hold(std::string_view argument);
    Fields Release(std::string_view argument);
    Fields DeviceMap(std::string_view argument);
    Fields Mode(std::string_view argument);
    Fields FirstBlock(std::string_view argument);
    Fields OpenFlash(std::string_view argument);
    Fields NextBlock(std::string_view argument);
    Fields FlashState(std::string_view argument);
    Fields StageBlock(std::string_view argument);
    Fields CloseFlash(std::string_view argument);

    static const std::array<Command, 11> Commands;
    static const Command* Find(std::string_view command);

    void SetHeld(bool isHeld);
    std::string BlockField();
    /// Whether the value is stored in that part of the memory for good.
    template <class Value>
    bool Store(Value& part, const Value& value);

    LineState& memory_;
    std::string name_{DefaultTerminalName};
    bool isHeld_ = false;
    bool isOpen_ = false;
    bool takesBlocks_ = false;
    std::size_t address_ = 0;
    std::map<std::size_t, std::string> staged_;  ///< blocks by address
};

}  // namespace kelvora::bench
