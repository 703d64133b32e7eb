// Filling a setup window from its line: the scan, and what the setup becomes from its answer. What it says to
// the user is told in layout/ScanTexts.h.
#pragma once

#include <optional>
#include <vector>

#include "comms/LineDrivers.h"
#include "flash/FlashImage.h"
#include "flash/TakeFromImage.h"
#include "setup/PosCfg.h"
#include "setup/SetupDocument.h"
#include "setup/SetupReader.h"

namespace kelvora {

struct ScanOutcome {
    LineResult line;
    SetupDocument document;                 ///< empty when no map came, or none that a window could show
    std::optional<FlashImage> image;        ///< the device's flash, when the whole of it came
    std::vector<TakeNotice> notices;        ///< of the image
    std::optional<DeviceMapError> refusal;  ///< why the line's map makes no setup

    /// Whether all of the setup came from the line, however the work on it ended.
    bool IsWhole() const { return image && !document.DeviceMap.empty(); }
};

/// The line that a window's settings mean.
LineTarget TargetOf(const PosCfg& settings);

/// The modules of a line that reported this device map, without what it does not tell: their keys, and all
/// options but a badge reader's tracks. Empty where they make no setup.
ModuleList ModulesOfMap(const std::string& deviceMap);

/// Scans a line; once its map has come the line is left in the mode of a till. Nothing is shown meanwhile.
ScanOutcome ScanLine(Comms& comms, const LineTarget& target, const LineHooks& hooks);

}  // namespace kelvora
