// What is different between two flash images, told by what the addresses mean where that is known.
#pragma once

#include <optional>
#include <vector>

#include "flash/FlashImage.h"
#include "setup/ModuleRecord.h"

namespace kelvora {

struct ImageDifference {
    enum class What {
        Bytes,      ///< bytes without a name, up to the next equal or named one
        Fiscal,     ///< "1" or "0": the fiscal keyboard's bit, or other bits of its byte
        Module,     ///< the device code of a position on the line
        Autoread,   ///< "1" or "0": the badge reader's bit, or other bits of its byte
        Key,        ///< a key's type, or (both types equal) its code
        Separator,  ///< the badge reader's separator after a track
        Last = Separator,
    };

    What what = What::Bytes;
    std::size_t first = 0;               ///< address of the first byte that differs or of the named bytes
    std::size_t last = 0;                ///< address of the last one
    std::optional<std::size_t> region;   ///< its index in FlashRegions; nothing outside of them
    ModuleKind kind = ModuleKind::None;  ///< the module's, of Autoread, Key and Separator
    int number = 0;                      ///< the key's number, the track or the position on the line, from 1
    char before = 0;                     ///< what stands there; KeyType::NoKey for an erased key
    char after = 0;

    friend bool operator==(const ImageDifference&, const ImageDifference&) = default;
};

/// The differences of all addresses, ascending. `modules` are those of the line: the keys of a module are
/// named where both images have its table at the same address as that line; an image without pairs
/// has it there too. Other differences of the tables are bytes.
std::vector<ImageDifference> DescribeDifferences(const FlashImage& before, const FlashImage& after,
                                                 const ModuleList& modules);

/// The records of the modules that an image's own pairs name, for DescribeDifferences where no setup is at
/// hand.
ModuleList ModulesOf(const FlashImage& image);

}  // namespace kelvora
