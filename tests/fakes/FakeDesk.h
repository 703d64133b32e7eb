// What setup windows work with, behind which nothing is real.
#pragma once

#include "fakes/FakeEventLoop.h"
#include "fakes/FakeFileDialogs.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakePrompt.h"
#include "layout/SetupDesk.h"

namespace kelvora {

struct FakeDesk {
    FakeFiles files;
    FakePrompt prompt;
    FakeFileDialogs dialogs;
    FakeEventLoop loop;
    Texts texts{prompt};
    PosCfg defaults{SetupMode::New, 0};
    UserFiles userFiles{texts, files, dialogs, defaults.OutInitDir};
    Lines lines{{}, loop};
    RunningOperation operation;
    OperationNotes notes{nullptr, lines, texts};
    SetupDesk desk{userFiles, lines, operation, notes, loop, defaults};
};

}  // namespace kelvora
