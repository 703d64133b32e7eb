#include "layout/CommandRules.h"

namespace kelvora {

CommandState CommandStateOf(const CommandSituation& situation)
{
    CommandState state;
    if (situation.busy || situation.placing)
        return state;
    state.program = true;
    state.scan = situation.canScan;
    if (!situation.modules)
        return state;
    state.setup = true;
    state.line = situation.canScan;
    state.undo = situation.canUndo;
    state.redo = situation.canRedo;
    state.copy = situation.focused.has_value();
    state.layout = LayoutStateOf(*situation.modules);
    state.options = situation.focused && HasOptions(*situation.focused);
    return state;
}

}  // namespace kelvora
