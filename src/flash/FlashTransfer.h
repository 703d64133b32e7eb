// Downloading into a device's flash, and verifying it. A download never leaves a device between two images:
// blocks are staged, and one commit, which the device checks by its CRC-32, makes them its content. What the
// device then holds is told as far as it is known, and nothing else is.
//
// A download in its order: refuse what is for no line; scan the line and read the flash; refuse, or find out
// what would change; release the line and close the port; keep a backup; ask; open and hold the line again;
// go on only when the flash is still as it was read; stage the blocks that differ; commit. When the port goes
// away under the commit and comes back within seconds, the device is asked what came of it.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "comms/LineDrivers.h"
#include "flash/TransferPlan.h"

namespace kelvora {

/// The user's answer to what a download is about to do.
enum class TransferAnswer {
    Yes,
    No,
    KeepContents,  ///< no Yes for what TransferPlan::TakesContents
};

/// What a download asks of its user. Both are called while the port is closed and nothing waits on the line.
struct TransferSteps {
    /// Keeps the image that the device holds, and returns where. Throws FileError when it cannot be kept.
    std::function<std::string(const TransferPlan& plan)> keepBackup;
    /// Whether to go on; `backup` is what keepBackup returned.
    std::function<TransferAnswer(const TransferPlan& plan, const std::string& backup)> ask;
    /// What the terminal must call itself; nothing for any.
    std::optional<std::string> terminalName{};
};

struct TransferResult {
    /// What the device holds.
    enum class State {
        Old,      ///< what it held before
        Same,     ///< the wanted image, which it held before; nothing was written
        New,      ///< the wanted image
        Unknown,  ///< one of the two: the commit was sent, and the device does not say what came of it
        Foreign,  ///< what somebody else wrote while the user was asked; nothing was written here
        Last = Foreign,
    };
    /// Why the work ended there.
    enum class Reason {
        Done,
        Line,           ///< the line failed or the user stopped the work, see `line`
        Refused,        ///< see `refusal`
        NotKept,        ///< the backup could not be written, see `backup` and `fileError`
        Declined,       ///< the question was answered No
        ContentsKept,   ///< the question whether the device may lose its key contents was not answered Yes
        DeviceChanged,  ///< the flash was no longer as it had been read when the line was held again
        Last = DeviceChanged,
    };

    bool isRestore = false;  ///< of a dump as it is
    State state = State::Old;
    Reason reason = Reason::Done;
    /// Of the last part of the work. It may also tell of a failure after the commit: the state is New then,
    /// and the reason Line.
    LineResult line;
    std::optional<TransferRefusal> refusal;
    std::optional<TransferPlan> plan;  ///< once the device is read and nothing is refused
    std::string backup;                ///< path of the backup; empty when none was kept
    std::string fileError;             ///< the path and the system's words
    /// What the device holds, where that is known whole.
    std::optional<FlashImage> image;
};

/// Brings that content into the device. A stop is asked for between any two commands, but no more once the
/// commit is sent. Throws nothing but what the steps throw beyond FileError.
TransferResult Download(Comms& comms, const LineTarget& target, const LineHooks& hooks,
                        const WantedContent& wanted, const TransferSteps& steps);

struct VerifyResult {
    enum class Outcome {
        NotRead,    ///< the upload failed or was stopped, see `line`
        NotBuilt,   ///< the setup has no image, see `refusal`; the line was not touched
        Different,  ///< from `firstDifference` on
        Same,
        Last = Same,
    };

    Outcome outcome = Outcome::NotRead;
    LineResult line;
    std::optional<BuildRefusal> refusal;
    std::optional<FlashImage> setupImage;
    std::optional<FlashImage> deviceImage;
    std::uint16_t firstDifference = 0;         ///< address
    std::vector<ImageDifference> differences;  ///< of the regions, from the setup to the device
};

/// Compares the flash with the setup, over the addresses of the regions. The setup's image is built over
/// `lastRead`, the image last read from that device; without one over what the device holds now: only what
/// the setup decides can differ then.
VerifyResult Verify(Comms& comms, const LineTarget& target, const LineHooks& hooks,
                    const SetupDocument& document, const FlashImage* lastRead);

}  // namespace kelvora
