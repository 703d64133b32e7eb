// One module of the line: what it is, where it stands, its key map and options.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "keymap/ModuleKind.h"

namespace kelvora {

struct ModuleRecord {
    ModuleKind Kind = ModuleKind::None;
    std::uint8_t Position = 0;    ///< place on the line from 0; its index in the device map
    std::uint8_t DeviceCode = 0;  ///< see setup/DeviceCode.h; 0 ends the list for the writer
    std::uint8_t Width =
        0;  ///< width of the module's button in pixels at 96 dpi; of the part itself for parts
    std::uint8_t KeyCount = 0;  ///< number of matrix codes of the model
    std::uint8_t Rows = 0;
    std::uint8_t Columns = 0;
    std::string KeyMap;            ///< one key type a grid position, row after row; see keymap/Models.h
    std::string_view MatrixCodes;  ///< one cell of three characters a key position, parted by ","
    std::string Options;           ///< fixed layout by kind, see setup/Options.h
    std::int16_t Left = 0;         ///< of the module's button, in twips
    std::int16_t Top = 0;          ///< of the module's button, in twips

    friend bool operator==(const ModuleRecord&, const ModuleRecord&) = default;
};

/// The modules of one line in line order; the vector's end stands for the record of kind 0 that ends the
/// list on the device.
using ModuleList = std::vector<ModuleRecord>;

/// A line holds seven modules at most, parts of the main keyboard included.
inline constexpr std::size_t MaximumModules = 7;

/// The kind of the module with that device code; None for 0, 255 and every code that has no record.
ModuleKind KindOf(std::uint8_t deviceCode);

/// The kind's name; it heads the kind's section in a setup file, parts of a keyboard aside. Empty for None.
std::string_view KindName(ModuleKind kind);

/// The kind whose section in a setup file has that head (upper-case, without brackets); None for other heads.
ModuleKind KindOfSection(std::string_view head);

/// The device code that a new module of that kind has: all tracks, the backlight on. 0 for None.
std::uint8_t FirstDeviceCode(ModuleKind kind);

/// The device code of the badge reader that reads these tracks ("1,2"); 0 for other tracks.
std::uint8_t CodeOfTracks(std::string_view tracks);

/// A new record for that device code, with the model's grid, matrix codes, default key map and options.
/// Left and Top stay 0: the strip sets them. A code without a kind gives a record of kind None.
ModuleRecord CreateRecord(std::uint8_t deviceCode, std::uint8_t position = 0);

}  // namespace kelvora
