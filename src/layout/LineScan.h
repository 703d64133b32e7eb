// Filling a setup window from its line: the scan, and what the setup becomes from its answer.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/MessageCatalogue.h"
#include "app/Messages.h"
#include "comms/LineDrivers.h"
#include "flash/FlashImage.h"
#include "platform/Prompt.h"
#include "setup/PosCfg.h"
#include "setup/SetupDocument.h"

namespace kelvora {

/// A message box that waits for the end of an operation.
struct LaterMessage {
    MessageId message;
    BoxIcon icon = BoxIcon::Information;
    std::string extra;
};

struct ScanOutcome {
    LineOutcome outcome = LineOutcome::Done;  ///< of the transfer
    SetupDocument document;                   ///< empty when no map came, or none that a window could show
    std::optional<FlashImage> image;          ///< the device's flash, when the whole of it came
    std::vector<LaterMessage> messages;
};

/// The line that a window's settings mean.
LineTarget TargetOf(const PosCfg& settings);

/// Scans a line and sets its connection mode. Nothing is shown meanwhile; `catalogue` gives the messages'
/// texts.
ScanOutcome ScanLine(Comms& comms, const LineTarget& target, ConnectionMode mode, const LineHooks& hooks,
                     const MessageCatalogue& catalogue);

}  // namespace kelvora
