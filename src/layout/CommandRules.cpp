#include "layout/CommandRules.h"

namespace kelvora {

CommandState CommandStateOf(const CommandSituation& situation)
{
    CommandState state;
    if (situation.busy || situation.placing)
        return state;
    state.fileNew = true;
    state.fileOpen = true;
    state.fileScan = situation.canScan;
    state.language = true;
    state.about = true;
    state.portNames = true;
    state.practice = true;
    state.series = true;
    if (!situation.modules)
        return state;
    state.fileSave = true;
    state.fileSaveAs = true;
    state.fileClose = true;
    state.sheet = true;
    state.undo = situation.canUndo;
    state.redo = situation.canRedo;
    state.copy = situation.focused.has_value();
    state.paste = true;
    state.layout = LayoutStateOf(*situation.modules);
    state.options = situation.focused && HasOptions(*situation.focused);
    state.ports = true;
    state.portSettings = true;
    state.windows = true;
    state.backups = true;
    // The line tools follow the scan.
    state.rescan = state.fileScan;
    state.flash = state.fileScan;
    state.wizard = state.fileScan;
    return state;
}

}  // namespace kelvora
