// A setup as the commands "show" and "scan" print it for people.
#pragma once

#include <string>

#include "setup/SetupDocument.h"

namespace kelvora {

/// A setup for people: a line a module, and under it the grid of a keyboard. UTF-8.
std::string SetupText(const SetupDocument& document);

}  // namespace kelvora
