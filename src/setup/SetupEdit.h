// A change of many setups alike: settings by name, under the rules of the key grids and of the setup file.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "setup/SetupDocument.h"
#include "setup/SetupSetting.h"

namespace kelvora {

struct SetupEdit {
    std::vector<ModuleRecord> keys;  ///< each module of such a kind gets that one's key map; kinds with keys
    std::vector<SetupSetting> settings;  ///< made after that, in their order
};

/// Makes the change. Empty when it was legal; else which setting was not, and the rule, in English: the
/// document is then to be thrown away. Keys of a range are set in the order of their numbers: an unused key
/// is made a single one first, a larger key frees those that it covered as single ones, and those that a key
/// of the range has just come to cover are passed over.
std::string ApplyEdit(SetupDocument& document, const SetupEdit& edit);

/// Whether all of them hold. A setting is had where making it would be legal and change nothing.
bool HoldAll(const SetupDocument& document, std::span<const SetupCondition> conditions);

}  // namespace kelvora
