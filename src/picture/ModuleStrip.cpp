#include "picture/ModuleStrip.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "keymap/ModuleKind.h"
#include "platform/NumberText.h"
#include "setup/ModuleRecord.h"

namespace kelvora {

namespace {

struct ButtonKind {
    StripButton button;
    ModuleKind kind;
};

constexpr std::array ButtonKinds{
    ButtonKind{StripButton::Master, ModuleKind::KM096},
    ButtonKind{StripButton::Backlight, ModuleKind::Backlight},
    ButtonKind{StripButton::Code4, ModuleKind::Code4},
    ButtonKind{StripButton::KM064, ModuleKind::KM064},
    ButtonKind{StripButton::MCR, ModuleKind::MCR},
    ButtonKind{StripButton::ICCR, ModuleKind::ICCR},
    // Buttons that share a record with another one come after it: a kind is found by its first row.
    ButtonKind{StripButton::MasterTemplate, ModuleKind::KM096},
    ButtonKind{StripButton::Keypad, ModuleKind::ICCR},
};

const PlacedButton* FindPlaced(const std::vector<PlacedButton>& strip, StripButton button)
{
    const auto found = std::ranges::find(strip, button, &PlacedButton::button);
    return found == strip.end() ? nullptr : &*found;
}

/// Adds `part` at its place on `parent`, once, if it is one of its parts.
void PlacePart(std::vector<PlacedButton>& strip, const PlacedButton& parent, StripButton part)
{
    const auto place = ParsePartTag(ShapeOf(part).tag);
    if (place && place->parent == parent.button && !FindPlaced(strip, part))
        strip.push_back({part, parent.left + place->dx, parent.top + place->dy});
}

}  // namespace

std::optional<PartPlace> ParsePartTag(std::string_view tag)
{
    const auto dash = tag.find('-');
    const auto cross = tag.find('x');
    if (dash == std::string_view::npos || cross == std::string_view::npos || cross < dash)
        return std::nullopt;
    const auto parent = WholeNumber<int>(tag.substr(0, dash));
    const auto dx = WholeNumber<int>(tag.substr(dash + 1, cross - dash - 1));
    const auto dy = WholeNumber<int>(tag.substr(cross + 1));
    if (!parent || !dx || !dy || *parent < 0 || *parent >= StripButtonCount)
        return std::nullopt;
    return PartPlace{static_cast<StripButton>(*parent), *dx, *dy};
}

std::vector<PlacedButton> LayOutStrip(const ModuleList& modules)
{
    std::vector<PlacedButton> strip;
    int left = StripOriginLeft + StripGap;
    for (auto module = modules.begin(); module != modules.end(); ++module) {
        const auto button = ButtonOf(module->Kind);
        if (!button || !IsMainButton(*button) || FindPlaced(strip, *button))
            continue;
        const PlacedButton main{*button, left, StripOriginTop + ShapeOf(*button).top};
        strip.push_back(main);
        for (auto later = module + 1; later != modules.end(); ++later)
            if (const auto part = ButtonOf(later->Kind))
                PlacePart(strip, main, *part);
        // The keypad has no record of its own.
        PlacePart(strip, main, StripButton::Keypad);
        left += ShapeOf(*button).width + StripGap;
    }
    return strip;
}

std::optional<StripButton> ButtonOf(ModuleKind kind)
{
    const auto found = std::ranges::find(ButtonKinds, kind, &ButtonKind::kind);
    if (found == ButtonKinds.end())
        return std::nullopt;
    return found->button;
}

ModuleKind KindOfButton(StripButton button)
{
    return std::ranges::find(ButtonKinds, button, &ButtonKind::button)->kind;
}

StripButton MainButtonOf(StripButton button)
{
    const auto place = ParsePartTag(ShapeOf(button).tag);
    return place ? place->parent : button;
}

bool HasOptions(StripButton button)
{
    const StripButton main = MainButtonOf(button);
    return main == StripButton::Master || main == StripButton::MCR;
}

std::optional<StripHit> HitTest(const std::vector<PlacedButton>& strip, int x)
{
    for (const PlacedButton& placed : strip) {
        const int width = ShapeOf(placed.button).width;
        const int within = x - placed.left;
        if (IsMainButton(placed.button) && within >= 0 && within < width)
            return StripHit{placed.button, within * 2 >= width};
    }
    return std::nullopt;
}

void SetStripPlaces(ModuleList& modules)
{
    const auto strip = LayOutStrip(modules);
    for (ModuleRecord& record : modules) {
        const auto button = ButtonOf(record.Kind);
        const PlacedButton* placed = button ? FindPlaced(strip, *button) : nullptr;
        record.Left = static_cast<std::int16_t>(placed ? placed->left : 0);
        record.Top = static_cast<std::int16_t>(placed ? placed->top : 0);
        record.Width = static_cast<std::uint8_t>(placed ? ShapeOf(*button).width / TwipsPerPixel : 0);
    }
}

}  // namespace kelvora
