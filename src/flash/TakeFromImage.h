// Taking what a device's flash image says of key maps and options into the setup of its scanned line.
#pragma once

#include <vector>

#include "flash/FlashImage.h"
#include "setup/SetupDocument.h"

namespace kelvora {

/// Something of the image that was not taken; the setup keeps there what it had.
struct TakeNotice {
    enum class What {
        EmptyImage,           ///< the image names no modules yet: no key maps are taken
        ModulesDisagree,      ///< its main modules are not the line's: no key maps are taken
        TableNotFound,        ///< the module's key table is behind a module of an unknown code
        ErasedKey,            ///< the module's key table has an erased pair at a key contact
        InvalidKeyMap,        ///< the module's keys overlap, or hang over the grid's edge
        SeparatorNotCarried,  ///< a setup file could not carry the separator: taken as none
        Last = SeparatorNotCarried,
    };

    What what = What::EmptyImage;
    ModuleKind kind = ModuleKind::None;  ///< whose key map or separator it is
    int track = 0;                       ///< of a separator, 1 to 3

    friend bool operator==(const TakeNotice&, const TakeNotice&) = default;
};

struct TakenSetup {
    SetupDocument document;
    std::vector<TakeNotice> notices;
};

/// The setup of a scanned line with the key maps and options of the device's image. The device map stays as
/// the line reported it, with the tracks and the backlight that it says. A key map is taken only where the
/// model has key contacts and the present map has no "X", and only as a whole.
TakenSetup TakeFromImage(SetupDocument scanned, const FlashImage& image);

}  // namespace kelvora
