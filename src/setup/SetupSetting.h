// What a person names in a setup, by words: a setting with its value, such as "mcr.tracks=1,2", and a
// condition on a setup. Letters of any size; texts are Windows-1252.
//
//   fiscal  backlight  mcr.autoread            yes or no, on or off
//   mcr.tracks                                 1,2  2,3  1,2,3
//   mcr.separator1 to mcr.separator3           one character, or none
//   KM096.43  KM064.97..104  ICCR.161          single  double-vertical  double-horizontal  quadruple  unused
//                                              keys by the numbers that they bear in the setup
#pragma once

#include <string>
#include <string_view>

#include "setup/SetupDifferences.h"

namespace kelvora {

struct SetupSetting {
    ModuleKind kind = ModuleKind::None;  ///< the module whose record holds it
    ModuleOption option;                 ///< as OptionsOf has it; for keys the key type
    int firstKey = 0, lastKey = 0;       ///< numbers of keys; 0 for other settings
    std::string name;                    ///< as it was named, without its value
};

/// Throws std::invalid_argument, which says in English what was expected.
SetupSetting ParseSetting(std::string_view text);

/// A module that the setup has, or a setting that it has; with "!" in front one that it has not.
struct SetupCondition {
    bool isNegated = false;
    ModuleKind module = ModuleKind::None;  ///< None for a setting
    SetupSetting setting;
};

/// As ParseSetting; without "=" the name of a module.
SetupCondition ParseCondition(std::string_view text);

/// The name of a key type as it is set: "double-vertical".
std::string_view KeyTypeWord(char type);

}  // namespace kelvora
