// The identity block that every module keeps in its EEPROM, and the identities that it can give a module.
//   offset  0, 1  AA 55, the block's mark
//           2     main or extension keyboard     5  badge reader
//           3     display                        6  key lock
//           4     chip card unit                 7  0
// An identity is a value at its own offset; erased bytes are FF.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kelvora {

inline constexpr std::size_t IdentityBlockSize = 8;

using IdentityBlock = std::array<std::uint8_t, IdentityBlockSize>;

/// The EEPROM address of the block's first byte.
inline constexpr std::uint16_t IdentityBlockAddress = 0x00AA;

struct DeviceIdentity {
    std::string_view name;
    std::uint8_t value;
    std::size_t offset;
    IdentityBlock block;  ///< what a module of that identity is given
};

/// The three parts of the composite keyboard are given the same bytes: each carries all of its identities.
inline constexpr IdentityBlock CompositeBlock{0xAA, 0x55, 214, 23, 0, 0, 4, 0};

/// The identities that can be written, in the order in which they are offered.
inline constexpr std::array OfferedIdentities{
    DeviceIdentity{"KM96CM", 214, 2, CompositeBlock},
    DeviceIdentity{"LCD", 23, 3, CompositeBlock},
    DeviceIdentity{"KEYLOCK", 4, 6, CompositeBlock},
    DeviceIdentity{"KM64", 191, 2, {0xAA, 0x55, 191, 0, 0, 0, 0, 0}},
    DeviceIdentity{"MCR 1+2", 11, 5, {0xAA, 0x55, 0, 0, 0, 11, 0, 0}},
    DeviceIdentity{"MCR 2+3", 2, 5, {0xAA, 0x55, 0, 0, 0, 2, 0, 0}},
    DeviceIdentity{"MCR 1+2+3", 3, 5, {0xAA, 0x55, 0, 0, 0, 3, 0, 0}},
    DeviceIdentity{"ICCR", 8, 4, {0xAA, 0x55, 0, 0, 8, 0, 0, 0}},
};

/// The name of a module whose identity is not known, or that has not been read.
inline constexpr std::string_view UnknownIdentity = "UNKNOWN";

struct DecodedIdentity {
    std::string_view name = UnknownIdentity;  ///< also "LCD (unlit)", which is never written
    std::optional<std::size_t> offset;        ///< where its value stands in the block, where there is one
    std::optional<std::size_t> offered;       ///< its place among OfferedIdentities, where it can be written

    friend bool operator==(const DecodedIdentity&, const DecodedIdentity&) = default;
};

/// The identities of a line's modules by their blocks, address 0 first; nothing for a module that could not
/// be read. Address 0 is judged by its keyboard byte. A later one takes the first byte that says something,
/// and where it has the same block as the one before it, the next such byte after that one's.
std::vector<DecodedIdentity> DecodeIdentities(std::span<const std::optional<IdentityBlock>> blocks);

/// "AA 55 D6 17 00 00 04 00".
std::string BlockText(const IdentityBlock& block);

/// The block that such a text describes, in large or small digits; nothing for any other text.
std::optional<IdentityBlock> ParseBlock(std::string_view text);

}  // namespace kelvora
