// Two setups side by side: what differs, and on which pictures it is seen. A view shows the same of both: the
// strip, or one keyboard's keys. No window lives here.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "setup/SetupDifferences.h"
#include "setup/SetupDocument.h"

namespace kelvora {

class SetupComparison {
public:
    enum class Side { Before, After };

    SetupComparison(SetupDocument before, SetupDocument after);

    /// Of `before` and `after`, in that order.
    const std::vector<SetupDifference>& Differences() const { return differences_; }

    /// The views in the order in which they are offered: None for the strip, then the keyboards that either
    /// has.
    const std::vector<ModuleKind>& Views() const { return views_; }

    /// The view on which that difference is seen.
    ModuleKind ViewOf(std::size_t difference) const;

    /// One side of a view as an SVG document, with what differs marked and one difference, where it is seen
    /// there, in a ring. Empty when the side does not have the module, or has none at all.
    std::string Picture(Side side, ModuleKind view, std::optional<std::size_t> chosen) const;

    /// The difference that is meant by a point of that picture, in twips; the first where a module has
    /// several.
    std::optional<std::size_t> DifferenceAt(Side side, ModuleKind view, int x, int y) const;

    const SetupDocument& Document(Side side) const { return side == Side::Before ? before_ : after_; }

private:
    std::string KeysPicture(Side side, ModuleKind view, const SetupDifference* chosen) const;
    std::string ModulesPicture(Side side, const SetupDifference* chosen) const;

    SetupDocument before_;
    SetupDocument after_;
    std::vector<SetupDifference> differences_;
    std::vector<ModuleKind> views_{ModuleKind::None};
};

}  // namespace kelvora
