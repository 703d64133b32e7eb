#include "picture/SetupComparison.h"

#include <algorithm>
#include <utility>

#include "keymap/Keyboard.h"
#include "keymap/Models.h"
#include "picture/KeyGridPicture.h"
#include "picture/StripPicture.h"

namespace kelvora {

namespace {

using What = SetupDifference::What;

const ModuleRecord* RecordOf(const SetupDocument& document, ModuleKind kind)
{
    const auto index = FindModule(document.Modules, kind);
    return index ? &document.Modules[*index] : nullptr;
}

// The strip's width, so that both sides are drawn to one scale.
int WidthOf(const SetupDocument& document)
{
    SvgDrawing none;
    return DrawStrip(none, document.Modules, 0, 0).width;
}

// Those of an order that stand elsewhere in the other one.
std::vector<ModuleKind> MovedModules(const SetupDifference& order)
{
    std::vector<ModuleKind> moved;
    for (std::size_t i = 0; i < order.before.size() && i < order.after.size(); ++i)
        if (order.before[i] != order.after[i])
            moved.push_back(static_cast<ModuleKind>(order.before[i]));
    return moved;
}

}  // namespace

SetupComparison::SetupComparison(SetupDocument before, SetupDocument after)
    : before_(std::move(before)), after_(std::move(after)), differences_(CompareSetups(before_, after_))
{
    for (const Model& model : Models)
        if (RecordOf(before_, model.kind) || RecordOf(after_, model.kind))
            views_.push_back(model.kind);
}

ModuleKind SetupComparison::ViewOf(std::size_t difference) const
{
    const SetupDifference& shown = differences_.at(difference);
    return shown.what == What::Key ? shown.kind : ModuleKind::None;
}

std::string SetupComparison::Picture(Side side, ModuleKind view, std::optional<std::size_t> chosen) const
{
    const SetupDifference* const shown =
        chosen && ViewOf(*chosen) == view ? &differences_.at(*chosen) : nullptr;
    return view == ModuleKind::None ? ModulesPicture(side, shown) : KeysPicture(side, view, shown);
}

std::string SetupComparison::KeysPicture(Side side, ModuleKind view, const SetupDifference* chosen) const
{
    const SetupDocument& document = Document(side);
    const ModuleRecord* const record = RecordOf(document, view);
    if (!record)
        return {};
    KeyGridMarks marks;
    for (const SetupDifference& difference : differences_)
        if (difference.what == What::Key && difference.kind == view)
            marks.marked.push_back(difference.position);
    marks.framed = chosen ? chosen->position : 0;
    return KeyGridPicture(*record, FirstKeyNumber(view, document.Modules), marks);
}

std::string SetupComparison::ModulesPicture(Side side, const SetupDifference* chosen) const
{
    StripMarks marks;
    for (const SetupDifference& difference : differences_)
        if (difference.kind != ModuleKind::None)
            marks.marked.push_back(difference.kind);
    if (chosen && chosen->what == What::Order)
        marks.framed = MovedModules(*chosen);
    else if (chosen)
        marks.framed.push_back(chosen->kind);
    return StripPicture(Document(side).Modules, std::max(WidthOf(before_), WidthOf(after_)), marks);
}

std::optional<std::size_t> SetupComparison::DifferenceAt(Side side, ModuleKind view, int x, int y) const
{
    const SetupDocument& document = Document(side);
    const ModuleRecord* const record = RecordOf(document, view);
    const bool isStrip = view == ModuleKind::None;
    const ModuleKind kind = isStrip ? ModuleInPicture(document.Modules, x, y) : view;
    if (kind == ModuleKind::None || (!isStrip && !record))
        return std::nullopt;
    const int position = isStrip ? 0 : PositionInPicture(*record, x, y);
    // A point on a large key means that key too.
    const int owner = isStrip ? 0 : CoveringKey(position, record->Columns, record->KeyMap);
    const auto isMeant = [&](const SetupDifference& difference) {
        if (isStrip)
            return difference.kind == kind || (IsPart(difference.kind) && kind == ModuleKind::KM096);
        return difference.what == What::Key && difference.kind == kind &&
               (difference.position == position || difference.position == owner);
    };
    const auto found = std::ranges::find_if(differences_, isMeant);
    return found == differences_.end()
               ? std::nullopt
               : std::optional(static_cast<std::size_t>(found - differences_.begin()));
}

}  // namespace kelvora
