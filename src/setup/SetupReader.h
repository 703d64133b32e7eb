// Reading the text of a setup file, or the device map of a scanned line, into a setup.
// The format is told in setup/SetupWriter.h, the cutting into lines in setup/SetupLines.h.
#pragma once

#include <string_view>

#include "setup/SetupDocument.h"

namespace kelvora {

/// Whether a second module of one kind is read. A window could show only one of them and refuses it; read,
/// its lines go to the first module of the kind.
enum class RepeatedKinds { Read, Refuse };

/// The setup that `text` describes. Throws SetupError at the first line that is not valid.
SetupDocument ReadSetup(std::string_view text, RepeatedKinds repeated = RepeatedKinds::Refuse);

/// The setup of a line that reported these device codes, one character a position, under the rules of a setup
/// file. The device map is kept letter for letter; a code that no module has keeps its position without a
/// record. Throws SetupError (line 0).
SetupDocument ReadDeviceMap(std::string_view deviceMap);

}  // namespace kelvora
