#include "eeprom/IdentityBlock.h"

#include <algorithm>

#include "platform/NumberText.h"

namespace kelvora {

namespace {

constexpr std::uint8_t Erased = 0xFF;
constexpr std::size_t FirstIdentityOffset = 2;

/// A display that is recognised, and never written.
constexpr std::string_view UnlitName = "LCD (unlit)";
constexpr std::uint8_t UnlitValue = 31;
constexpr std::size_t UnlitOffset = 3;

/// Two digits and the blank between bytes.
constexpr std::size_t ByteTextLength = 3;

DecodedIdentity Lookup(std::uint8_t value, std::size_t offset)
{
    const auto* const found = std::ranges::find_if(OfferedIdentities, [&](const DeviceIdentity& identity) {
        return identity.value == value && identity.offset == offset;
    });
    if (found != OfferedIdentities.end())
        return {found->name, offset, static_cast<std::size_t>(found - OfferedIdentities.begin())};
    if (value == UnlitValue && offset == UnlitOffset)
        return {UnlitName, offset, std::nullopt};
    return {UnknownIdentity, offset, std::nullopt};
}

std::optional<std::size_t> FindIdentityByte(const IdentityBlock& block, std::size_t from)
{
    for (std::size_t offset = from; offset < block.size(); ++offset)
        if (block.at(offset) != 0 && block.at(offset) != Erased)
            return offset;
    return std::nullopt;
}

DecodedIdentity DecodeFrom(const IdentityBlock& block, std::size_t from)
{
    const auto offset = FindIdentityByte(block, from);
    return offset ? Lookup(block.at(*offset), *offset) : DecodedIdentity{};
}

// The keyboard byte alone says what stands first on the line; only where it is 0, as in a block that was
// written for another device, the next byte that says something does.
DecodedIdentity DecodeFirst(const IdentityBlock& block)
{
    const std::uint8_t value = block.at(FirstIdentityOffset);
    return value == 0 ? DecodeFrom(block, FirstIdentityOffset) : Lookup(value, FirstIdentityOffset);
}

// The parts of a composite keyboard have one block among them: each is the identity after its predecessor's.
DecodedIdentity DecodeTwin(const IdentityBlock& block, const DecodedIdentity& previous)
{
    const std::size_t after = previous.offset ? *previous.offset + 1 : FirstIdentityOffset;
    return DecodeFrom(block, FindIdentityByte(block, after) ? after : FirstIdentityOffset);
}

}  // namespace

std::vector<DecodedIdentity> DecodeIdentities(std::span<const std::optional<IdentityBlock>> blocks)
{
    std::vector<DecodedIdentity> identities(blocks.size());
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        if (!blocks[i])
            continue;
        if (i == 0)
            identities[i] = DecodeFirst(*blocks[i]);
        else if (blocks[i] == blocks[i - 1])
            identities[i] = DecodeTwin(*blocks[i], identities[i - 1]);
        else
            identities[i] = DecodeFrom(*blocks[i], FirstIdentityOffset);
    }
    return identities;
}

std::string BlockText(const IdentityBlock& block)
{
    return HexBytes(std::string(block.begin(), block.end()));
}

std::optional<IdentityBlock> ParseBlock(std::string_view text)
{
    IdentityBlock block{};
    if (text.size() != block.size() * ByteTextLength - 1)
        return std::nullopt;
    for (std::size_t i = 0; i < block.size(); ++i) {
        const std::string_view part = text.substr(i * ByteTextLength, ByteTextLength);
        const auto byte = WholeNumber<std::uint8_t>(part.substr(0, 2), 16);
        if (!byte || (part.size() == ByteTextLength && part[2] != ' '))
            return std::nullopt;
        block.at(i) = *byte;
    }
    return block;
}

}  // namespace kelvora
