// A key map drawn with characters: each key a box as large as it is on the device, with its number.
#pragma once

#include <string>
#include <string_view>

#include "setup/ModuleRecord.h"

namespace kelvora {

/// The record's grid, each line led by `indent`; an unused key's number stands in brackets, and where the
/// device has no key nothing is drawn. `firstKeyNumber` is the number of the key in the top left corner.
std::string KeyGridText(const ModuleRecord& record, int firstKeyNumber, std::string_view indent);

}  // namespace kelvora
