// The module strip: which of the eight buttons are shown for a chain and where each stands.
// Lengths are in twips, 15 to a pixel at 96 dpi. Nothing here draws.
#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "setup/SetupDocument.h"

namespace kelvora {

inline constexpr int TwipsPerPixel = 15;

/// Origin of the strip and the gap before and between its main buttons.
inline constexpr int StripOriginLeft = 0;
inline constexpr int StripOriginTop = 0;
inline constexpr int StripGap = 20;

/// The fixed roles of the strip's buttons; the number is the index in the control array `cbModule`.
enum class StripButton : int {
    MasterTemplate = 0,  ///< shown only while a master keyboard is being placed
    Master = 1,
    Backlight = 2,
    Code4 = 3,
    KM064 = 4,
    MCR = 5,
    ICCR = 6,
    Keypad = 7,
};

inline constexpr int StripButtonCount = 8;

struct StripButtonShape {
    StripButton button;
    std::string_view caption;  ///< empty for parts
    int width;
    int height;
    int top;               ///< of a main button
    std::string_view tag;  ///< of a part: "<parent index>-<dx>x<dy>"; empty for a main button
};

inline constexpr std::array<StripButtonShape, StripButtonCount> StripButtons{{
    {StripButton::MasterTemplate, "Composite Keyboard", 2940, 2625, 585, ""},
    {StripButton::Master, "Composite Keyboard", 2940, 2625, 585, ""},
    {StripButton::Backlight, "", 360, 375, 0, "1-2340x0"},
    {StripButton::Code4, "", 1740, 660, 0, "1-550x350"},
    {StripButton::KM064, "Slave Keyboard", 2070, 2625, 585, ""},
    {StripButton::MCR, "MCR", 675, 2625, 585, ""},
    {StripButton::ICCR, "ICCR", 1140, 2625, 600, ""},
    {StripButton::Keypad, "", 945, 945, 0, "6-100x1175"},
}};

constexpr const StripButtonShape& ShapeOf(StripButton button)
{
    return StripButtons[static_cast<std::size_t>(button)];
}

/// A part's place relative to its parent, as its tag says; nothing for a main button.
struct PartPlace {
    StripButton parent;
    int dx;
    int dy;
};
std::optional<PartPlace> ParsePartTag(std::string_view tag);

/// A shown button and where it stands.
struct PlacedButton {
    StripButton button;
    int left;
    int top;

    friend bool operator==(const PlacedButton&, const PlacedButton&) = default;
};

/// The shown buttons in chain order, each part after its parent: the chain slots.
std::vector<PlacedButton> LayOutStrip(const ModuleList& modules);

/// The main or part button that shows a module of that kind.
std::optional<StripButton> ButtonOf(ModuleKind kind);

/// The module that a button stands for; the keypad stands for the chip card unit.
ModuleKind KindOfButton(StripButton button);

/// Whether it is a main module's button, not a part that rides on one.
constexpr bool IsMainButton(StripButton button)
{
    return ShapeOf(button).tag.empty();
}

/// Whether a click opens a key mapping form; the chip card unit's keys are on its keypad.
constexpr bool OpensKeyMap(StripButton button)
{
    return button == StripButton::Master || button == StripButton::KM064 || button == StripButton::Keypad;
}

/// Whether the button takes the keyboard focus; the master keyboard's parts are reached through it.
constexpr bool TakesFocus(StripButton button)
{
    return button != StripButton::Backlight && button != StripButton::Code4;
}

/// Whether the module that the button belongs to has options to set.
bool HasOptions(StripButton button);

/// The button that owns a part, or the button itself.
StripButton MainButtonOf(StripButton button);

/// The main button under a horizontal position, and whether the position lies in its right half.
struct StripHit {
    StripButton button;
    bool after;

    friend bool operator==(const StripHit&, const StripHit&) = default;
};
std::optional<StripHit> HitTest(const std::vector<PlacedButton>& strip, int x);

/// Sets Left, Top and Width of each record from the strip.
void SetStripPlaces(ModuleList& modules);

}  // namespace kelvora
