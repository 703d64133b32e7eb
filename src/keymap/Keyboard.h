// The rules of a key map: which key types a position may take, when a map is valid, what changing one key
// does to its neighbours. Positions count from 1, row by row; `columns` is the grid's width.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace kelvora {

/// The mask bit of each key type (0 single, 1 double vertical, 2 double horizontal, 3 quadruple).
inline constexpr std::array<std::uint8_t, 4> KeyTypeBits{1, 2, 4, 8};

/// Key types that the key at `position` may take, as a bit mask (1 single, 2 double vertical, 4 double
/// horizontal, 8 quadruple); 0 when the position carries no key of its own. Reading past the map's end ends
/// the computation.
std::uint8_t AllowedKeyTypes(int position, int columns, std::string_view map);

/// True when every larger key of the first rows x columns cells has its covered cells at "0". A map that is
/// shorter is not valid. With `repair` the covered cells are set to "0" instead of failing; a cell past the
/// map's end cannot be set and fails.
bool CheckKeyMap(std::string& map, std::uint8_t rows, std::uint8_t columns, bool repair);

/// The same test without repair, on a map that is only read.
bool IsKeyMapValid(std::string_view map, std::uint8_t rows, std::uint8_t columns);

/// The map that a device's key table stands for. `positions` holds one character a grid position, whose code
/// is the index of the key's two bytes in the table; code 255, or a position past its end, is no key.
/// `base` is where the table starts in `table`, `count` the module's number of positions. An index past the
/// table's end reads as no key.
std::string KeyMapFromDeviceTable(std::string_view table, std::string_view positions, std::size_t base,
                                  std::size_t count);

/// The position of the larger key that covers the cell at `position`, which then holds "0"; 0 for none.
int CoveringKey(int position, int columns, std::string_view map);

/// True when a larger key owns the cell at `position`, which then holds "0".
bool IsCovered(int position, int columns, std::string_view map);

/// Changes one key: cells that its old type covered become single keys, the new type is written with the
/// cells that it covers. A position outside the map is left alone, and so is a covered cell past its end.
void SetKeyType(int position, char newType, int columns, std::string& map);

}  // namespace kelvora
