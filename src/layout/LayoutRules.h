// Which layout commands a chain allows.
#pragma once

#include "setup/SetupDocument.h"

namespace kelvora {

/// The enabled state of the Layout menu for a chain.
struct LayoutState {
    bool addMaster = false;
    bool addKB64 = false;
    bool addMCR = false;
    bool addICCR = false;
    bool add = false;
    bool del = false;
    bool move = false;
    int moduleCount = 0;  ///< main modules shown, 0 without a master keyboard

    friend bool operator==(const LayoutState&, const LayoutState&) = default;
};

/// What the menu offers for these modules.
LayoutState LayoutStateOf(const ModuleList& modules);

}  // namespace kelvora
