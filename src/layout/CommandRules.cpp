#include "layout/CommandRules.h"

namespace kelvora {

CommandState EnabledCommands(const CommandSituation& situation)
{
    CommandState state;
    state.fileScan = situation.canScan;
    if (situation.busy || situation.placing) {
        // What runs needs its window, and the line, as they are until it ends.
        state.fileNew = false;
        state.fileOpen = false;
        state.fileScan = false;
        return state;
    }
    if (!situation.modules)
        return state;
    state.fileSave = true;
    state.fileSaveAs = true;
    state.fileClose = true;
    state.undo = situation.canUndo;
    state.redo = situation.canRedo;
    state.layout = EnabledCommands(*situation.modules);
    // The line tools follow the scan.
    state.rescan = state.fileScan;
    state.flash = state.fileScan;
    return state;
}

}  // namespace kelvora
