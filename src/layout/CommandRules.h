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

/// The enabled state of each command, named after its menu entry.
struct CommandState {
    bool fileNew = false;   ///< also from a template
    bool fileOpen = false;  ///< with recent files, dropped ones and those that another start hands over
    bool fileScan = false;
    bool fileSave = false;
    bool fileSaveAs = false;  ///< also as a template
    bool fileClose = false;
    bool sheet = false;  ///< print, preview, export, and comparing with another setup
    bool undo = false;
    bool redo = false;
    bool copy = false;  ///< the focused module
    bool paste = false;
    LayoutState layout;
    bool options = false;  ///< of the focused module
    bool ports = false;
    bool portSettings = false;
    bool portNames = false;  ///< which device stands behind which port
    bool rescan = false;
    bool flash = false;     ///< download, verify, the dumps and restoring one
    bool backups = false;   ///< the list of backups, which needs no line
    bool wizard = false;    ///< the EEPROM wizard
    bool practice = false;  ///< begin or end simulated devices
    bool series = false;    ///< many tills one after another, on lines of their own
    bool language = false;
    bool about = false;    ///< a box that must not come in between
    bool windows = false;  ///< changing between the open windows, and closing them

    friend bool operator==(const CommandState&, const CommandState&) = default;
};

/// What can be done in that situation. While an operation runs or a module is being placed nothing can: what
/// runs needs its window, and the line, as they are until it ends.
CommandState CommandStateOf(const CommandSituation& situation);

}  // namespace kelvora
