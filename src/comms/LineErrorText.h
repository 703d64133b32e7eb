// What a user reads when a line failed: the message of the error's number, and where and why it happened.
#pragma once

#include <string>
#include <vector>

#include "catalogue/MessageCatalogue.h"
#include "catalogue/Messages.h"
#include "comms/LineDrivers.h"

namespace kelvora {

struct LineErrorText {
    MessageId message;
    std::string extra;  ///< lines below it: the port with its settings, and what was seen there
};

/// For a result that is not done and was not stopped by the user.
LineErrorText DescribeLineFailure(const MessageCatalogue& catalogue, const LineTarget& target,
                                  const LineResult& result);

/// What did not end as it should, a line each: what the user should know, and below it what was seen.
std::vector<std::string> WarningLines(const MessageCatalogue& catalogue, const LineWarnings& warnings);

}  // namespace kelvora
