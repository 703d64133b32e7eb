#include "layout/CommandRules.h"

namespace kelvora {

CommandState EnabledCommands(const CommandSituation& situation)
{
    CommandState state;
    state.fileScan = situation.canScan;
    if (situation.busy) {
        // The operation needs the line and its window; both stay as they are until it ends.
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
    state.communications = true;
    // The line tools follow the scan.
    state.rescan = state.fileScan;
    state.flash = state.fileScan;
    return state;
}

}  // namespace kelvora
