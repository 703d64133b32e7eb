// The flash commands of a setup window without the window: which image is meant, which file, and what a
// device's answer does to the session. Nothing here asks while a line works.
#pragma once

#include <optional>
#include <string>

#include "flash/FlashTransfer.h"
#include "layout/SetupSession.h"

namespace kelvora {

/// Writes the image of the setup, or the device's as last read, as a dump text under a name that is asked
/// for. Without such an image a message says why.
void DumpSetupImage(SetupSession& session);
void DumpDeviceImage(SetupSession& session);

/// Asks for a dump and reads it; nothing on Cancel, and after a message when it cannot be read.
struct OpenedDump {
    std::string path;
    FlashDump dump;
};
std::optional<OpenedDump> OpenDump(SetupSession& session);

/// Names the setup's file in the operation's note, where that file holds the setup as it stands.
void NoteFile(OperationNote& note, const SetupSession& session);

/// Names a file in the note; its hash only when it can be read.
void NoteFile(OperationNote& note, const Files& files, const std::string& path);

/// Download and Verify on the session's line. What the device holds afterwards, where that is known, becomes
/// the session's device image.
TransferResult DownloadFrom(SetupSession& session, const WantedContent& wanted, const LineHooks& hooks,
                            const TransferSteps& steps);
VerifyResult VerifyAgainst(SetupSession& session, const LineHooks& hooks);

}  // namespace kelvora
