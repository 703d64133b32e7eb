// How work on a line ends, whatever it was and however it went. The terminal is told what it must still be
// told: above all to use its devices again, if it was told to leave them alone. A step of the end that fails
// is a warning beside what the work has brought, and loses nothing of it. Each of its commands is
// sent twice at the most, and all of the end together takes two seconds and the time of the longest frame, so
// that no dead or noisy line holds anybody up.
#pragma once

#include <string>
#include <vector>

#include "comms/LineWork.h"

namespace kelvora {

/// A step of the end that has failed.
struct LineWarning {
    enum class Step {
        FlashNotClosed,    ///< "0FB1" without a block, or "0FB3" without a commit
        NotReleased,       ///< "$9911": the terminal may still hold its line
        TransferNotEnded,  ///< "$9904!3"
        ModeNotSet,        ///< "$9904" with the mode in which the line was to be left
        Last = ModeNotSet,
    };

    Step step = Step::NotReleased;
    std::string detail;  ///< the command and why, in English
};

using LineWarnings = std::vector<LineWarning>;

/// Closes the flash after it was read, nothing being staged. Throws LineStopped.
void CloseReadFlash(LineWork& work, LineWarnings& warnings);

/// Tells the terminal all that it must still be told; `isDone` when the work has gone well. No stop is heard.
/// The line is open.
void EndWork(LineWork& work, bool isDone, LineWarnings& warnings);

}  // namespace kelvora
