// Which commands of the menus and the toolbar can be given: with a setup window in front, or without one.
#pragma once

#include <optional>

#include "layout/LayoutRules.h"
#include "picture/ModuleStrip.h"

namespace kelvora {

/// What the rules look at.
struct CommandSituation {
    const ModuleList* modules = nullptr;  ///< of the setup window in front; null without one
    std::optional<StripButton> focused;   ///< the button of its strip that has the focus
    bool busy = false;                    ///< a device operation runs
    bool placing = false;                 ///< a module is being placed: it is dropped or cancelled first
    bool canScan = false;                 ///< the devices can be talked to
    bool canUndo = false;
    bool canRedo = false;
};

/// Which commands are enabled: those that always are together share an entry.
struct CommandState {
    /// What needs no setup: a new one, also from a template, opening one, also a recent, dropped or handed
    /// over one, the names of the ports, practice, the series, the language and the box about the program.
    bool program = false;
    bool scan = false;  ///< into a window of its own
    /// What any setup allows: to save, close, print, export and compare it, to paste a module, its port and
    /// settings, the list of backups, and the places of the windows.
    bool setup = false;
    /// What needs its line as well: scanning it anew, download, verify, the dumps, restoring one, the wizard.
    bool line = false;
    bool undo = false;
    bool redo = false;
    bool copy = false;  ///< the focused module
    LayoutState layout;
    bool options = false;  ///< of the focused module

    friend bool operator==(const CommandState&, const CommandState&) = default;
};

/// What can be done in that situation. While an operation runs or a module is being placed nothing can: what
/// runs needs its window, and the line, as they are until it ends.
CommandState CommandStateOf(const CommandSituation& situation);

}  // namespace kelvora
