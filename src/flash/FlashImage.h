// The image of a keyboard device's flash memory, and what stands where in it.
//
//   address      content
//   6            bit 0: fiscal keyboard
//   128..141     seven pairs, one per position on the line: device code (0: none, and none after it), option
//                byte (badge reader: bit 0 = auto-read)
//   256..767     key tables in line order, see flash/KeyTables.h
//   1024..1026   badge reader's separators after track 1, 2, 3; 0 or FF is none
//   1027..8191   the device's own key contents
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "comms/FlashSize.h"

namespace kelvora {

using FlashImage = std::array<std::uint8_t, FlashSize>;

/// What flash memory reads after it was erased.
inline constexpr std::uint8_t ErasedByte = 0xFF;

namespace FlashLayout {
inline constexpr std::size_t FiscalAt = 6;
inline constexpr std::uint8_t FiscalBit = 0x01;
inline constexpr std::size_t PairsAt = 128;
inline constexpr std::size_t PairSize = 2;  ///< of a position's pair, and of a key's
inline constexpr std::uint8_t AutoreadBit = 0x01;
inline constexpr std::size_t TablesAt = 256;
inline constexpr std::size_t TablesEnd = 768;  ///< one past the last table byte
inline constexpr std::size_t SeparatorsAt = 1024;
inline constexpr std::size_t SeparatorCount = 3;
inline constexpr std::size_t ContentsAt = 1027;  ///< to the end
}  // namespace FlashLayout

/// A part of the image that belongs to the setup or to the device's keys.
struct FlashRegion {
    std::uint16_t start;
    std::uint16_t length;

    constexpr bool Contains(std::size_t address) const
    {
        return address >= start && address < std::size_t{start} + length;
    }
};

/// The device's regions, from its constant table, in ascending order: options, modules, key tables, key
/// contents.
inline constexpr std::array FlashRegions{
    FlashRegion{6, 1},
    FlashRegion{128, 14},
    FlashRegion{256, 512},
    FlashRegion{1024, 7168},
};

/// Walks the image in ascending order over all addresses, or over those of the regions. Without `compare`
/// each byte there is copied from `source`; the result is 0. With it nothing is written, and the result is
/// the first address whose bytes differ, or 0 when none does: a difference at address 0 looks like none.
std::uint16_t CopyOrCompareRegions(FlashImage& destination, const FlashImage& source, bool allAddresses,
                                   bool compare);

/// The same comparison, of images that are only read.
std::uint16_t FirstDifference(const FlashImage& a, const FlashImage& b, bool allAddresses);

/// The image's bytes as text, and back; nothing for a text of another size.
std::string_view TextOf(const FlashImage& image);
std::optional<FlashImage> ImageFrom(std::string_view bytes);

/// The device codes that the image's own pairs hold, in line order, up to the first 0.
std::string DeviceCodesOf(const FlashImage& image);

/// Whether the pairs name a module; those of a device that has not been set up yet are empty or erased.
bool NamesModules(const FlashImage& image);

}  // namespace kelvora
