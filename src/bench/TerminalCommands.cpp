#include "bench/TerminalCommands.h"

#include <algorithm>
#include <array>
#include <utility>

#include "bench/FreshLine.h"
#include "bench/TerminalFrame.h"

namespace kelvora::bench {

namespace {

constexpr std::string_view OutOfOrder = "!2";
constexpr const char* Done = "0";
constexpr const char* NotDone = "1";

/// A field's length character is 32 + length, so this is the longest field.
constexpr std::size_t LongestField = 223;

/// Bytes of a staged block, which stands at a multiple of it.
constexpr std::size_t BlockSize = 64;

std::string_view Bytes(const FlashBytes& image)
{
    return {reinterpret_cast<const char*>(image.data()), image.size()};
}

std::string Counted(std::string_view field)
{
    return std::string(1, static_cast<char>(32 + field.size())).append(field);
}

std::string CrcText(const FlashBytes& image)
{
    return Hex(Crc32(Bytes(image)), 8);
}

}  // namespace

const std::array<TerminalCommands::Command, 11> TerminalCommands::Commands{
    Command{"$9900", &TerminalCommands::Attention}, Command{"$9918", &TerminalCommands::Hold},
    Command{"$9902", &TerminalCommands::DeviceMap}, Command{"$9911", &TerminalCommands::Release},
    Command{"$9904", &TerminalCommands::Mode},      Command{"000", &TerminalCommands::FirstBlock},
    Command{"0FB0", &TerminalCommands::OpenFlash},  Command{"20", &TerminalCommands::NextBlock},
    Command{"0F02", &TerminalCommands::FlashState}, Command{"0FB1", &TerminalCommands::StageBlock},
    Command{"0FB3", &TerminalCommands::CloseFlash},
};

const TerminalCommands::Command* TerminalCommands::Find(std::string_view command)
{
    const auto* const found =
        std::ranges::find_if(Commands, [&](const Command& known) { return command.starts_with(known.name); });
    return found == Commands.end() ? nullptr : found;
}

bool TerminalCommands::Knows(std::string_view command)
{
    return Find(command) != nullptr;
}

std::string TerminalCommands::Run(std::string_view command)
{
    const Command* const found = Find(command);
    if (found == nullptr)
        return std::string(command).append(OutOfOrder);
    std::string reply(found->name);
    const Fields fields = (this->*found->run)(command.substr(found->name.size()));
    if (!fields)
        return reply.append(OutOfOrder);
    for (const std::string& field : *fields)
        reply.append(Counted(field));
    return reply;
}

std::string TerminalCommands::Refuse(std::string_view command, std::string_view status)
{
    const Command* const found = Find(command);
    return std::string(found == nullptr ? command : found->name).append(Counted(status));
}

void TerminalCommands::Restart()
{
    isHeld_ = false;
    isOpen_ = false;
    takesBlocks_ = false;
    address_ = 0;
    staged_.clear();
}

TerminalCommands::Fields TerminalCommands::Attention(std::string_view argument)
{
    return argument.empty() ? Fields({Done, name_}) : std::nullopt;
}

// The simulated terminal has no cashier who would use its devices meanwhile.
TerminalCommands::Fields TerminalCommands::Hold(std::string_view argument)
{
    if (!argument.empty())
        return std::nullopt;
    SetHeld(true);
    return Fields({Done});
}

TerminalCommands::Fields TerminalCommands::Release(std::string_view argument)
{
    if (!argument.empty())
        return std::nullopt;
    SetHeld(false);
    return Fields({Done});
}

void TerminalCommands::SetHeld(bool isHeld)
{
    if (std::exchange(isHeld_, isHeld) != isHeld && onHeld)
        onHeld();
}

TerminalCommands::Fields TerminalCommands::DeviceMap(std::string_view argument)
{
    if (!argument.empty())
        return std::nullopt;
    std::string codes;
    for (const std::uint8_t code : DeviceMapOf(memory_.modules))
        codes.append(codes.empty() ? "" : ",").append(std::to_string(code));
    return Fields({Done, std::to_string(memory_.modules.size()), codes});
}

TerminalCommands::Fields TerminalCommands::Mode(std::string_view argument)
{
    if (!argument.empty()) {
        const bool isMode =
            argument.size() == 2 && argument[0] == '!' && argument[1] >= '0' && argument[1] <= '3';
        if (!isMode)
            return std::nullopt;
        if (!Store(memory_.mode, argument[1]))
            return Fields({NotDone});
    }
    return Fields({Done, std::string(1, memory_.mode)});
}

TerminalCommands::Fields TerminalCommands::FirstBlock(std::string_view argument)
{
    if (!argument.empty())
        return std::nullopt;
    address_ = 0;
    return Fields({Done});
}

TerminalCommands::Fields TerminalCommands::OpenFlash(std::string_view argument)
{
    if (!argument.empty())
        return std::nullopt;
    isOpen_ = true;
    takesBlocks_ = true;
    staged_.clear();
    return Fields({Done, std::to_string(FlashSize)});
}

TerminalCommands::Fields TerminalCommands::NextBlock(std::string_view argument)
{
    if (!argument.empty() || !isOpen_ || address_ >= FlashSize)
        return std::nullopt;
    std::vector<std::string> fields{Done, Hex(static_cast<std::uint32_t>(address_), 4), BlockField()};
    if (address_ < FlashSize)
        fields.push_back(BlockField());
    return fields;
}

// As many bytes as the field holds; an escape pair is not split.
std::string TerminalCommands::BlockField()
{
    std::string field;
    for (; address_ < FlashSize; ++address_) {
        const std::string escaped = Escape(static_cast<char>(memory_.flash[address_]));
        if (field.size() + escaped.size() > LongestField)
            break;
        field += escaped;
    }
    return field;
}

// Also while the flash is closed: whoever lost the answer to a commit asks here what came of it.
TerminalCommands::Fields TerminalCommands::FlashState(std::string_view argument)
{
    return argument.empty() ? Fields({Done, CrcText(memory_.flash)}) : std::nullopt;
}

TerminalCommands::Fields TerminalCommands::StageBlock(std::string_view argument)
{
    if (!takesBlocks_)
        return std::nullopt;
    if (argument.empty()) {
        takesBlocks_ = false;
        return Fields({Done});
    }
    const auto address = ParseHex(argument.substr(0, 4), 4);
    if (!address || *address % BlockSize != 0 || *address >= FlashSize)
        return std::nullopt;
    const auto block = Unescape(argument.substr(4));
    if (!block || block->size() != BlockSize)
        return std::nullopt;
    staged_[*address] = *block;
    return Fields({Done});
}

TerminalCommands::Fields TerminalCommands::CloseFlash(std::string_view argument)
{
    if (!argument.empty() && !ParseHex(argument, 8))
        return std::nullopt;
    FlashBytes image = memory_.flash;
    for (const auto& [address, block] : staged_)
        std::ranges::copy(block, image.begin() + static_cast<std::ptrdiff_t>(address));
    const bool isStaged = isOpen_ && CrcText(image) == argument;
    const bool isClose = argument.empty() ? isOpen_ : isStaged || CrcText(memory_.flash) == argument;
    if (!isClose)
        return std::nullopt;
    if (isStaged && !Store(memory_.flash, image))
        return Fields({NotDone});
    isOpen_ = false;
    takesBlocks_ = false;
    staged_.clear();
    return Fields({Done});
}

template <class Value>
bool TerminalCommands::Store(Value& part, const Value& value)
{
    if (part == value)
        return true;
    const Value before = std::exchange(part, value);
    const bool isKept = !onStored || onStored();
    if (!isKept)
        part = before;
    return isKept;
}

}  // namespace kelvora::bench
