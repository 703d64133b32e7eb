// How the commands that talk to devices name a line and tell what happened on it.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "catalogue/Messages.h"
#include "catalogue/OneLineText.h"
#include "cli/Console.h"
#include "cli/LineAccess.h"
#include "comms/LineDrivers.h"
#include "platform/Files.h"
#include "platform/PortName.h"

namespace kelvora {

/// A message of the windows, with the lines below it, as one line of UTF-8.
std::string LineMessageText(const MessageId& message, std::string_view extra);

/// Tells why a command's file is not used. Gives ExitCode::Rejected.
int RefuseFile(const LineOptions& options, const std::string& file, const Refusal& why, Console& console);

/// Does `work` on the files of a command's output. False when it fails, which has been told; the exit code is
/// ExitCode::Rejected then.
bool WorkOnOutput(const LineOptions& options, Console& console, const std::function<void(Files&)>& work);

/// Tells that a write needs --yes where there is no terminal to ask on. Gives ExitCode::Usage.
int RefuseUnasked(Console& console);

/// What the exit codes of the commands that compare or write mean.
inline constexpr std::string_view LineExitCodes =
    "Exit code: 0 done; 1 the file was rejected, or is not what the device holds or is for; 2 wrong usage;\n"
    "3 the devices or their line failed, or the work was stopped.";

/// Tells what did not end as it should, a line each.
void TellWarnings(const LineTarget& target, const LineResult& result, Console& console);

/// Why the work on a line is not done, as one line of UTF-8.
std::string LineFailureText(const LineTarget& target, const LineResult& result);

}  // namespace kelvora
