// What the layout commands do to a setup: where a module may go, placing it there, deleting it.
//
// A chain's places count its main modules: place p is before the main module p, the last place is behind all.
// A placed module itself does not count, whether it is new or picked up to be moved.
#pragma once

#include <cstddef>
#include <vector>

#include "picture/ModuleStrip.h"
#include "setup/SetupDocument.h"

namespace kelvora {

/// The kinds of a chain's main modules in line order, without `placed`.
std::vector<ModuleKind> MainChain(const ModuleList& modules, ModuleKind placed = ModuleKind::None);

/// The first and the last place that a module of that kind may take: a master keyboard only the first, all
/// others none before it.
struct PlaceRange {
    std::size_t first = 0;
    std::size_t last = 0;

    friend bool operator==(const PlaceRange&, const PlaceRange&) = default;
};
PlaceRange PlacesFor(ModuleKind kind, const ModuleList& modules);

/// Whether a module of that kind, new or there already, has more than one place to be in; the master keyboard
/// never has, nor has any beside it alone.
bool HasChoice(ModuleKind kind, const ModuleList& modules);

/// The place of a module that is in the chain already.
std::size_t PlaceOf(ModuleKind kind, const ModuleList& modules);

/// The place that a drop on that button means, kept within the places for `kind`.
std::size_t PlaceOfHit(const StripHit& hit, ModuleKind kind, const ModuleList& modules);

/// The setup with a module of that kind at `place` (kept within the range), new or moved there with its key
/// map and options. Unchanged when the line has no room for a new one.
SetupDocument PlaceModule(const SetupDocument& document, ModuleKind kind, std::size_t place);

/// A horizontal position in twips, kept between the chain's first and last main button.
int ClampToStrip(int x, const std::vector<PlacedButton>& strip);

/// What Delete does with a button focused.
enum class Deletion {
    Nothing,     ///< a part that leaves only together with its module
    Module,      ///< that module
    WholeChain,  ///< the master keyboard and, after a question, all that hangs on it
};
Deletion PlanDeletion(const ModuleList& modules, StripButton focused);

/// The setup after that deletion.
SetupDocument Delete(const SetupDocument& document, StripButton focused);

}  // namespace kelvora
