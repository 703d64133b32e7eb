// Where the key tables of a line's modules stand in a flash image, and what a key's two bytes mean.
//
// The tables follow each other in line order from address 256; each has 16 bytes for each matrix column of
// its model: KM096 192, code-4 part 32, KM064 128, MCR 32, ICCR 48, backlight none. A module of an unknown
// code has a table of unknown size: nothing behind it can be found.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "flash/FlashImage.h"
#include "keymap/ModuleKind.h"

namespace kelvora {

struct KeyTable {
    ModuleKind kind = ModuleKind::None;
    std::uint8_t position = 0;  ///< of its module on the line, from 0
    std::size_t start = 0;      ///< address of its first byte
    std::size_t length = 0;

    friend bool operator==(const KeyTable&, const KeyTable&) = default;
};

/// The tables of the modules with these device codes, in line order, as far as they can be found and end
/// below address 768.
std::vector<KeyTable> KeyTablesOf(std::string_view deviceCodes);

/// The first table of that kind; null when there is none.
const KeyTable* FindTable(const std::vector<KeyTable>& tables, ModuleKind kind);

/// Whether two lines have the same main modules in the same order: tracks, the backlight's state and the
/// main keyboard's parts may differ. An unknown code is a main module of its own.
bool HaveSameMainModules(std::string_view deviceCodes, std::string_view otherCodes);

/// A key's two bytes: the type in the upper two bits of the first (single, double vertical, double
/// horizontal, quadruple), the key's code in the rest.
struct KeyPair {
    std::uint8_t first = ErasedByte;
    std::uint8_t second = ErasedByte;

    friend bool operator==(const KeyPair&, const KeyPair&) = default;
};

inline constexpr std::uint8_t KeyCodeMask = 0x3F;  ///< the part of a pair's first byte that is code
inline constexpr int KeyTypeShift = 6;

/// What the pair of a key without a code holds.
inline constexpr KeyPair UnusedPair{0, 0};

/// An erased pair has no code and no type.
constexpr bool IsErased(const KeyPair& pair)
{
    return pair == KeyPair{};
}

/// The pair at an address below 8191.
KeyPair PairAt(const FlashImage& image, std::size_t address);
void PutPair(FlashImage& image, std::size_t address, const KeyPair& pair);

/// The key type that a pair stands for, "0" for a key without a code; NoKey when it is erased.
char KeyTypeOf(const KeyPair& pair);

}  // namespace kelvora
