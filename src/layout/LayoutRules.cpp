#include "layout/LayoutRules.h"

#include "keymap/ModuleKind.h"
#include "setup/SetupDocument.h"

namespace kelvora {

namespace {

constexpr int MaximumMainModules = 4;
constexpr int MovableFrom = 3;  ///< the master stays first, so fewer modules have one order only

}  // namespace

LayoutState LayoutStateOf(const ModuleList& modules)
{
    const auto has = [&](ModuleKind kind) { return FindModule(modules, kind).has_value(); };
    LayoutState state;
    if (!has(ModuleKind::KM096)) {
        state.add = true;
        state.addMaster = true;
        return state;
    }
    state.addKB64 = !has(ModuleKind::KM064);
    state.addMCR = !has(ModuleKind::MCR);
    state.addICCR = !has(ModuleKind::ICCR);
    state.moduleCount = 1 + !state.addKB64 + !state.addMCR + !state.addICCR;
    state.add = state.moduleCount < MaximumMainModules;
    state.del = true;
    state.move = state.moduleCount >= MovableFrom;
    return state;
}

}  // namespace kelvora
