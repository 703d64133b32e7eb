// Which commands of the menus and the toolbar can be given: with a setup window in front, or without one.
#pragma once

#include "layout/LayoutRules.h"

namespace kelvora {

/// What the rules look at.
struct CommandSituation {
    const ModuleList* modules = nullptr;  ///< of the setup window in front; null without one
    bool busy = false;                    ///< a device operation runs
    bool canScan = false;                 ///< the connection mode allows talking to the devices
    bool placing = false;                 ///< a module is being placed: it is dropped or cancelled first
    bool canUndo = false;
    bool canRedo = false;
};

/// The enabled state of each command, named after its menu entry.
struct CommandState {
    bool fileNew = true;
    bool fileOpen = true;
    bool fileScan = false;
    bool fileSave = false;
    bool fileSaveAs = false;
    bool fileClose = false;
    bool undo = false;
    bool redo = false;
    LayoutState layout{false, false, false, false, false, false, false, 0};
    bool options = false;  ///< of the focused module
    bool portSettings = false;
    bool rescan = false;
    bool flash = false;   ///< download, verify and the dumps
    bool wizard = false;  ///< the EEPROM wizard

    friend bool operator==(const CommandState&, const CommandState&) = default;
};

CommandState EnabledCommands(const CommandSituation& situation);

}  // namespace kelvora
