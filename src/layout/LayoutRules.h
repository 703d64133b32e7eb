// Which layout commands a chain allows.
#pragma once

#include "setup/SetupDocument.h"

namespace kelvora {

/// The enabled state of the Layout menu for a chain.
struct LayoutState {
    bool addMaster = true;
    bool addKB64 = false;
    bool addMCR = false;
    bool addICCR = false;
    bool add = true;
    bool del = false;
    bool move = false;
    int moduleCount = 0;  ///< main modules shown, 0 without a master keyboard

    friend bool operator==(const LayoutState&, const LayoutState&) = default;
};

LayoutState EnabledCommands(const ModuleList& modules);

}  // namespace kelvora
