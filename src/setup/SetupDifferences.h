// What is different between two setups, as a person would tell it: modules, options and keys.
#pragma once

#include <string>
#include <vector>

#include "setup/SetupDocument.h"

namespace kelvora {

struct SetupDifference {
    enum class What {
        Added,           ///< a module of `after` alone
        Removed,         ///< a module of `before` alone
        Order,           ///< the modules that both have stand in another order; has no kind
        UnknownModules,  ///< device codes without a record, in line order; has no kind
        Tracks,
        Separator,
        Autoread,
        Fiscal,
        Backlight,
        Key,
        Last = Key,
    };

    What what = What::Added;
    ModuleKind kind = ModuleKind::None;
    int position = 0;      ///< a separator's track, or a key's grid position, from 1
    int numberBefore = 0;  ///< a key's number in each setup
    int numberAfter = 0;
    std::string before;  ///< the option or the key type; the kinds of Order, one character of its code each
    std::string after;
    int ownerBefore = 0;  ///< the number of the larger key that covers the key in each setup; 0 for none
    int ownerAfter = 0;

    friend bool operator==(const SetupDifference&, const SetupDifference&) = default;
};

/// One option of a module: which one, and what it says. `position` is a separator's track.
struct ModuleOption {
    SetupDifference::What what = SetupDifference::What::Fiscal;
    int position = 0;
    std::string value;

    friend bool operator==(const ModuleOption&, const ModuleOption&) = default;
};

/// The record's options in the order of its option text; empty for a kind without options.
std::vector<ModuleOption> OptionsOf(const ModuleRecord& record);

/// What changes from `before` to `after`: removed and added modules, the order of the others, then each
/// common module's options and keys. Strip coordinates do not count. A second module of one kind is compared
/// with the second one.
std::vector<SetupDifference> CompareSetups(const SetupDocument& before, const SetupDocument& after);

}  // namespace kelvora
