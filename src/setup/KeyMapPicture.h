// A key map as a setup file shows it: a picture of the grid, one row a line, with a letter for each cell.
//   S single   VV double, one below the other   HH double, side by side   QQ over QQ quadruple
//   _ no key at this position   = unused (a covered cell shows its key's letter)
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "setup/ModuleRecord.h"

namespace kelvora {

/// Appends "KeyMap = " and the picture's rows to `text`: " _" and CR LF between rows, CR LF after the last.
/// Cells beyond the last full row are not drawn. With one column the last cell is not written either: no
/// model has one column.
void AppendKeyMapPicture(std::string& text, std::string_view keyMap, std::size_t columns);

/// Whether the picture of a valid map reads back as that map (an absent position as an unused one): no key
/// hangs over the grid's right edge or shares a cell with another key.
bool CanBeDrawn(std::string_view keyMap, std::size_t columns);

/// Takes the joined rows of a picture as the record's key map; characters beyond the picture's length keep
/// what the map has. `line` is where the picture starts, for the error. Throws SetupError; the record is
/// then unchanged.
void ReadKeyMapPicture(std::string_view picture, ModuleRecord& record, std::size_t line);

}  // namespace kelvora
