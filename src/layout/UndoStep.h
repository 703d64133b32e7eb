// One step in the history of a setup window: the setup on its other side.
#pragma once

#include <optional>

#include "layout/SetupSession.h"

namespace kelvora {

class UndoStep {
public:
    /// The session's setup becomes `after`. A scan has taken the window's file away as well: `fileBefore` is
    /// what the window was held as.
    UndoStep(SetupSession& session, SetupDocument after, std::optional<WindowFile> fileBefore = {});

    /// Takes the step back, or makes it again. A file that either side has got meanwhile stays its own,
    /// unless another window has opened it: false then, and the setup comes with its name but without a file.
    bool Turn(SetupSession& session);

private:
    SetupDocument other_;
    std::optional<WindowFile> otherFile_;
};

}  // namespace kelvora
