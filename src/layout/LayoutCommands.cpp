#include "layout/LayoutCommands.h"

#include <algorithm>

namespace kelvora {

namespace {

bool IsMain(ModuleKind kind)
{
    const auto button = ButtonOf(kind);
    return button && IsMainButton(*button);
}

}  // namespace

std::vector<ModuleKind> MainChain(const ModuleList& modules, ModuleKind placed)
{
    std::vector<ModuleKind> chain;
    for (const ModuleRecord& record : modules)
        if (IsMain(record.Kind) && record.Kind != placed)
            chain.push_back(record.Kind);
    return chain;
}

PlaceRange PlacesFor(ModuleKind kind, const ModuleList& modules)
{
    const std::vector<ModuleKind> chain = MainChain(modules, kind);
    if (kind == ModuleKind::KM096)
        return {0, 0};
    // Nothing may stand before the master keyboard.
    const bool hasMaster = !chain.empty() && chain.front() == ModuleKind::KM096;
    return {hasMaster ? 1U : 0U, chain.size()};
}

bool HasChoice(ModuleKind kind, const ModuleList& modules)
{
    const PlaceRange range = PlacesFor(kind, modules);
    return range.first < range.last;
}

std::size_t PlaceOf(ModuleKind kind, const ModuleList& modules)
{
    const std::vector<ModuleKind> chain = MainChain(modules);
    return static_cast<std::size_t>(std::ranges::find(chain, kind) - chain.begin());
}

std::size_t PlaceOfHit(const StripHit& hit, ModuleKind kind, const ModuleList& modules)
{
    const std::vector<ModuleKind> chain = MainChain(modules, kind);
    const auto under = std::ranges::find(chain, KindOfButton(hit.button));
    const auto place = static_cast<std::size_t>(under - chain.begin()) + (hit.after ? 1U : 0U);
    const PlaceRange range = PlacesFor(kind, modules);
    return std::clamp(place, range.first, range.last);
}

SetupDocument PlaceModule(const SetupDocument& document, ModuleKind kind, std::size_t place)
{
    const PlaceRange range = PlacesFor(kind, document.Modules);
    place = std::clamp(place, range.first, range.last);
    const std::vector<ModuleKind> chain = MainChain(document.Modules, kind);
    SetupDocument placed = document;
    // The module in front of which it goes is found again once the moved one is out of the list.
    const auto indexOfNext = [&](const ModuleList& modules) {
        return place < chain.size() ? *FindModule(modules, chain[place]) : modules.size();
    };
    if (!FindModule(document.Modules, kind)) {
        InsertModule(placed, kind, indexOfNext(placed.Modules));
        return placed;
    }
    SetupDocument without = document;
    RemoveModule(without, kind);
    MoveModule(placed, kind, indexOfNext(without.Modules));
    return placed;
}

int ClampToStrip(int x, const std::vector<PlacedButton>& strip)
{
    const auto isMain = [](const PlacedButton& placed) { return IsMainButton(placed.button); };
    const auto first = std::ranges::find_if(strip, isMain);
    if (first == strip.end())
        return x;
    const auto last = std::find_if(strip.rbegin(), strip.rend(), isMain);
    return std::clamp(x, first->left, last->left + ShapeOf(last->button).width - 1);
}

Deletion PlanDeletion(const ModuleList& modules, StripButton focused)
{
    if (focused == StripButton::Keypad || focused == StripButton::MasterTemplate ||
        !FindModule(modules, KindOfButton(focused)))
        return Deletion::Nothing;
    const bool alone = MainChain(modules).size() == 1;
    return focused == StripButton::Master && !alone ? Deletion::WholeChain : Deletion::Module;
}

SetupDocument Delete(const SetupDocument& document, StripButton focused)
{
    SetupDocument left = document;
    switch (PlanDeletion(document.Modules, focused)) {
        case Deletion::Nothing:
            break;
        case Deletion::Module:
            RemoveModule(left, KindOfButton(focused));
            break;
        case Deletion::WholeChain:
            while (!left.Modules.empty())
                DeleteRecord(left, left.Modules.size() - 1);
            break;
    }
    return left;
}

}  // namespace kelvora
