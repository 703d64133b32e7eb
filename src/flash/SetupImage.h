// Building the flash image of a setup: what the setup decides is written over the image last read from the
// device, and only where the device holds something else.
#pragma once

#include <variant>
#include <vector>

#include "flash/FlashImage.h"
#include "setup/SetupDocument.h"

namespace kelvora {

/// Why no image can be built.
struct BuildRefusal {
    enum class Reason {
        RepeatedKind,   ///< the device could not tell the key tables of two modules of a kind apart
        UnknownModule,  ///< a code without a kind, whose key table has an unknown size
        Last = UnknownModule,
    };

    Reason reason = Reason::RepeatedKind;
    int position = 0;  ///< of the module on the line, from 0
    ModuleKind kind = ModuleKind::None;

    friend bool operator==(const BuildRefusal&, const BuildRefusal&) = default;
};

/// The image of that setup. `device` is the image last read from the device; null when none was, and every
/// byte that the setup does not decide is then erased. A key whose type stays keeps its bytes; a key that
/// the setup uses and that has no code in `device` gets its key number + 1 as code.
std::variant<FlashImage, BuildRefusal> BuildSetupImage(const SetupDocument& document,
                                                       const FlashImage* device);

/// Something of a setup that its image cannot carry: it would not be the same when read back.
struct UnheldSetting {
    enum class What {
        Key,        ///< a key type at a position where the model has no key, or none where it has one
        Separator,  ///< a separator that reads back as none
        Last = Separator,
    };

    What what = What::Key;
    ModuleKind kind = ModuleKind::None;
    int number = 0;    ///< the key's number, or the track, from 1
    char value = ' ';  ///< the key type, or the separator

    friend bool operator==(const UnheldSetting&, const UnheldSetting&) = default;
};

/// What the device cannot hold of that setup, in line order. Empty when building an image and taking the
/// setup from it gives the same setup.
std::vector<UnheldSetting> WhatTheDeviceCannotHold(const SetupDocument& document);

}  // namespace kelvora
