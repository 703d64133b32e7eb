// What a scan says to the user: how it ended, what the setup is now, and what to mind before it is saved.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "catalogue/MessageCatalogue.h"
#include "catalogue/Messages.h"
#include "layout/LineScan.h"
#include "platform/Prompt.h"

namespace kelvora {

/// A message box that waits for the end of an operation.
struct LaterMessage {
    MessageId message;
    BoxIcon icon = BoxIcon::Information;
    std::string extra;  ///< lines below it, the line's name first
};

/// The messages after a scan, in their order; none when all is well. Each names the line, and `window` where
/// there is one.
std::vector<LaterMessage> DescribeScan(const MessageCatalogue& catalogue, const LineTarget& target,
                                       const ScanOutcome& scan, std::string_view window = {});

/// What is to be minded with what was read: what the map and the image said, and what did not end as it
/// should, a line each.
std::vector<std::string> ScanRemarks(const MessageCatalogue& catalogue, const ScanOutcome& scan);

}  // namespace kelvora
