// How the commands that talk to devices name a line and tell what happened on it.
#pragma once

#include <string>
#include <string_view>

#include "app/Messages.h"
#include "comms/LineDrivers.h"

namespace kelvora {

/// "COM1".
std::string PortName(int port);

/// A text of the windows as one line of UTF-8. Where a line ended without a mark "; " parts it from the next.
std::string OneLineText(std::string_view text);

/// A message of the windows, with the lines below it, as one line of UTF-8.
std::string LineMessageText(const MessageId& message, std::string_view extra);

/// Why the work on a line is not done, as one line of UTF-8.
std::string LineFailureText(const LineTarget& target, const LineResult& result);

}  // namespace kelvora
