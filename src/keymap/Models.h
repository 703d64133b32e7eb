// The keyboard models: their key grids and the key map that each starts with.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "keymap/ModuleKind.h"

namespace kelvora {

/// Key types as a key map holds them, one character a grid position, row after row. The owning cell of a
/// larger key is its top left one; the cells it covers hold Unused.
namespace KeyType {
inline constexpr char Single = '1';
inline constexpr char DoubleVertical = '2';    ///< takes the cell below too
inline constexpr char DoubleHorizontal = '3';  ///< takes the cell to the right too
inline constexpr char Quadruple = '4';         ///< takes the cell to the right and the two below too
inline constexpr char Unused = '0';            ///< a disabled key, or a cell covered by a larger key
inline constexpr char NoKey = ' ';             ///< the device has no contact here
inline constexpr char Absent = 'X';            ///< the model has no such position

/// Whether a key of that type takes the cell to the right too.
constexpr bool IsWide(char type)
{
    return type == DoubleHorizontal || type == Quadruple;
}

/// Whether a key of that type takes the cell below too.
constexpr bool IsTall(char type)
{
    return type == DoubleVertical || type == Quadruple;
}

/// Whether the device has a key at a position of that type; it may be unused or covered.
constexpr bool HasKey(char type)
{
    return type != NoKey && type != Absent;
}
}  // namespace KeyType

/// A model with keys. `mapLength` counts the grid's positions; it exceeds rows x columns where the last row
/// is not full (the ICCR's fifth row has two positions, and its records hold four rows).
struct Model {
    ModuleKind kind;
    std::uint8_t rows;
    std::uint8_t columns;
    std::uint8_t mapLength;
    std::string_view defaultMap;
};

inline constexpr std::array Models{
    Model{ModuleKind::KM096, 8, 12, 96,
          "11        11"
          "11        11"
          "11        11"
          "111111111111"
          "111111111111"
          "111111111111"
          "111111111130"
          "111111111130"},
    Model{ModuleKind::KM064, 8, 8, 64, "1111111111111111111111111111111111111111111111111111111111111111"},
    Model{ModuleKind::ICCR, 4, 4, 18, "1111111111111111XX"},
};

/// The model of that kind; null for kinds without keys.
constexpr const Model* FindModel(ModuleKind kind)
{
    for (const Model& model : Models)
        if (model.kind == kind)
            return &model;
    return nullptr;
}

}  // namespace kelvora
