#include "picture/DevicePicture.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "keymap/KeyGrid.h"
#include "keymap/ModuleKind.h"
#include "picture/KeyGridPicture.h"
#include "picture/SvgDrawing.h"
#include "setup/DeviceCode.h"
#include "setup/ModuleRecord.h"
#include "setup/Options.h"

namespace kelvora {

namespace {

// Whole pixels at 96 dpi keep the keys crisp. The parts' places on the main keyboard fix its grid: the
// display lies over three rows of eight keys, and the lamp above the last two columns, hence the unequal
// margins.
constexpr int KeyCell = 15 * TwipsPerPixel;
constexpr int GridTop = 23 * TwipsPerPixel;
constexpr int MasterGridLeft = 7 * TwipsPerPixel;
constexpr KeyRect DisplayPanel{MasterGridLeft + 2 * KeyCell, GridTop, 8 * KeyCell, 3 * KeyCell};

constexpr int Corner = 90;
constexpr int EdgeWidth = 18;
constexpr int LabelSize = 150;
constexpr int SmallLabelSize = 110;

constexpr std::string_view EdgeColour = "#7f8792";
constexpr std::string_view GrooveColour = "#b3bac3";
constexpr std::string_view LabelColour = "#525a64";
constexpr std::string_view DarkColour = "#2c323a";
constexpr std::string_view DigitColour = "#23352b";

// What is on is filled, what is off an outline: the colours alone would be one grey to some.
constexpr std::string_view LitColour = "#1b63bf";
constexpr std::string_view LampColour = "#1c7f45";
constexpr Paint Off{"none", "#6b737e", 12};

/// Ids are unique within a strip, so that its pictures can share one document.
std::string Id(std::string_view name, StripButton button)
{
    return std::string(name) + std::to_string(static_cast<int>(button));
}

std::string Url(const std::string& id)
{
    return "url(#" + id + ")";
}

constexpr int WholePixels(int twips)
{
    return twips / TwipsPerPixel * TwipsPerPixel;
}

void DrawHousing(SvgDrawing& drawing, StripButton button)
{
    const auto& shape = ShapeOf(button);
    const std::string id = Id("housing", button);
    drawing.VerticalGradient(id, "#f4f5f7", "#d3d7dd");
    drawing.Rect({EdgeWidth / 2, EdgeWidth / 2, shape.width - EdgeWidth, shape.height - EdgeWidth}, Corner,
                 {Url(id), EdgeColour, EdgeWidth});
}

/// The rest for the hands below the keys: a groove across the housing.
void DrawFrontGroove(SvgDrawing& drawing, int width)
{
    constexpr int Y = 2230;
    drawing.Line(EdgeWidth, Y, width - EdgeWidth, Y, {"none", GrooveColour, EdgeWidth});
    drawing.Line(EdgeWidth, Y + EdgeWidth, width - EdgeWidth, Y + EdgeWidth,
                 {"none", "#ffffff", EdgeWidth / 2});
}

void DrawLamp(SvgDrawing& drawing, int x, int y, bool lit)
{
    drawing.Circle(x, y, 42, lit ? Paint{LampColour, EdgeColour, 12} : Off);
}

/// The seal of a fiscal keyboard: a shield with a tick.
void DrawFiscalSeal(SvgDrawing& drawing)
{
    drawing.Path(
        "M2565 2310 L2685 2350 V2440 C2685 2500 2635 2545 2565 2570 C2495 2545 2445 2500 2445 2440 V2350 Z",
        {LitColour});
    drawing.Path("M2507 2440 L2551 2484 L2625 2396", {"none", "#ffffff", 32});
}

/// The dark panel that the display sits in; without a display its two screws show.
void DrawDisplayPanel(SvgDrawing& drawing)
{
    const int middle = DisplayPanel.top + DisplayPanel.height / 2;
    drawing.Rect(DisplayPanel, 0, {DarkColour});
    for (const int x : {DisplayPanel.left + 120, DisplayPanel.left + DisplayPanel.width - 120}) {
        drawing.Circle(x, middle, 44, {"#6b737e"});
        drawing.Line(x - 20, middle + 20, x + 20, middle - 20, {"none", DarkColour, 16});
    }
}

void DrawMaster(SvgDrawing& drawing, StripButton button, const ModuleRecord& record)
{
    DrawHousing(drawing, button);
    DrawFrontGroove(drawing, ShapeOf(button).width);
    DrawDisplayPanel(drawing);
    DrawKeyGrid(drawing, record, {MasterGridLeft, GridTop, KeyCell, {}});
    drawing.Text(395, 185, LabelSize, LabelColour, "KM096");
    if (record.Options == Options::Yes)
        DrawFiscalSeal(drawing);
}

void DrawExtension(SvgDrawing& drawing, StripButton button, const ModuleRecord& record)
{
    const int width = ShapeOf(button).width;
    DrawHousing(drawing, button);
    DrawFrontGroove(drawing, width);
    DrawKeyGrid(drawing, record, {WholePixels((width - record.Columns * KeyCell) / 2), GridTop, KeyCell, {}});
    drawing.Text(425, 185, LabelSize, LabelColour, "KM064");
}

void DrawBacklight(SvgDrawing& drawing, StripButton button, const ModuleRecord& record)
{
    constexpr int X = 225;
    constexpr int Y = 180;
    const bool lit = record.DeviceCode == DeviceCode::BacklightOn;
    const std::string lens = Id("lens", button);
    const std::string halo = Id("halo", button);
    drawing.RadialGradient(lens, lit ? "#fffbe6" : "#9aa2ac", lit ? "#ffc833" : "#6a727d");
    if (lit) {
        drawing.RadialGradient(halo, "#ffb300", "#ffb300", 0);
        drawing.Circle(X, Y, 135, {Url(halo)});
    }
    drawing.Circle(X, Y, 88, {Url(lens), lit ? "#b97f00" : "#4c535d", 16});
}

/// A zero of a till's display, its top left corner at `left`.
void DrawDigit(SvgDrawing& drawing, int left)
{
    drawing.Rect({left, 205, 130, 240}, 40, {"none", DigitColour, 34});
}

void DrawDisplay(SvgDrawing& drawing, StripButton button)
{
    const std::string glass = Id("glass", button);
    // Inside the panel, whose colour hides that the two are not concentric.
    drawing.Rect({20, 10, ShapeOf(button).width - 20, ShapeOf(button).height - 20}, 40, {DarkColour});
    drawing.VerticalGradient(glass, "#cfe0cf", "#a9c4ad");
    drawing.Rect({90, 85, 1160, 495}, 30, {Url(glass)});
    for (const int left : {650, 875, 1060})
        DrawDigit(drawing, left);
    drawing.Circle(828, 440, 22, {DigitColour});
    // The key lock.
    drawing.Circle(1518, 332, 185, {"#c9ced5", "#8b939e", 18});
    drawing.Circle(1518, 332, 115, {"#eef0f2", "#8b939e", 14});
    drawing.Rect({1496, 257, 44, 150}, 22, {DarkColour});
}

bool ReadsTrack(const ModuleRecord& record, char track)
{
    return Options::Tracks(record.Options).find(track) != std::string_view::npos;
}

bool ReadsUnasked(const ModuleRecord& record)
{
    return record.Options.compare(Options::AutoreadAt, Options::On.size(), Options::On) == 0;
}

void DrawBadgeReader(SvgDrawing& drawing, StripButton button, const ModuleRecord& record)
{
    constexpr int BodyMiddle = 225;
    constexpr int TrackTop = 640;
    const int height = ShapeOf(button).height;
    DrawHousing(drawing, button);
    // The slot that a badge is drawn through, open at both ends.
    drawing.Rect({440, EdgeWidth / 2, 90, height - EdgeWidth}, 0, {DarkColour});
    drawing.Line(425, EdgeWidth, 425, height - EdgeWidth, {"none", "#ffffff", 10});
    drawing.Path("M150 330 L225 405 L300 330 M150 420 L225 495 L300 420", {"none", LabelColour, 34});
    drawing.Text(BodyMiddle, 185, SmallLabelSize, LabelColour, "MCR");
    for (const char track : {'1', '2', '3'}) {
        const bool lit = ReadsTrack(record, track);
        const int middle = BodyMiddle + (track - '2') * 120;
        drawing.Text(middle, TrackTop + 20, SmallLabelSize, lit ? LitColour : LabelColour,
                     std::string_view(&track, 1));
        drawing.Rect({middle - 34, TrackTop + 120, 68, 1240}, 34, lit ? Paint{LitColour} : Off);
    }
    // Only the tracks are known of one that has not been read yet.
    if (record.Options.size() < Options::McrLength)
        return;
    DrawLamp(drawing, BodyMiddle, 2200, ReadsUnasked(record));
    drawing.Text(BodyMiddle, 2350, SmallLabelSize, LabelColour, "AUTO");
}

void DrawChip(SvgDrawing& drawing)
{
    constexpr KeyRect Contacts{460, 560, 220, 180};
    constexpr Paint Cut{"none", "#8a6a1c", 12};
    drawing.Rect(Contacts, 36, {"#e3bd5a", "#8a6a1c", 12});
    drawing.Line(Contacts.left, 620, 530, 620, Cut);
    drawing.Line(Contacts.left, 680, 530, 680, Cut);
    drawing.Line(610, 620, 680, 620, Cut);
    drawing.Line(610, 680, 680, 680, Cut);
    drawing.Rect({530, 595, 80, 110}, 20, Cut);
}

void DrawChipCardUnit(SvgDrawing& drawing, StripButton button)
{
    const std::string card = Id("card", button);
    const auto keypad = ParsePartTag(ShapeOf(StripButton::Keypad).tag);
    DrawHousing(drawing, button);
    DrawFrontGroove(drawing, ShapeOf(button).width);
    drawing.Text(300, 185, LabelSize, LabelColour, "ICCR");
    DrawLamp(drawing, 970, 185, true);
    drawing.Rect({130, 360, 880, 130}, 40, {DarkColour});
    drawing.VerticalGradient(card, "#7fb2f0", "#2a7de1");
    drawing.Path("M230 430 H910 V940 C910 970 890 990 860 990 H280 C250 990 230 970 230 940 Z",
                 {Url(card), "#1f5fae", 14});
    DrawChip(drawing);
    drawing.Rect({290, 880, 300, 36}, 18, {"#d6e6fa"});
    if (keypad)
        drawing.Rect({keypad->dx - 20, keypad->dy - 20, ShapeOf(StripButton::Keypad).width + 40,
                      ShapeOf(StripButton::Keypad).height + 40},
                     60, {"#c4cad2", GrooveColour, 14});
}

void DrawKeypad(SvgDrawing& drawing, StripButton button, const ModuleRecord& record)
{
    const int side = ShapeOf(button).width;
    const int rows = DrawnKeyRows(record);
    const int lines = std::max(rows, static_cast<int>(record.Columns));
    if (lines == 0)
        return;
    const int cell = std::min(KeyCell, side / lines);
    DrawKeyGrid(
        drawing, record,
        {WholePixels((side - record.Columns * cell) / 2), WholePixels((side - rows * cell) / 2), cell, {}});
}

}  // namespace

std::string DeviceShapes(StripButton button, const ModuleRecord* record)
{
    if (!record) {
        const ModuleRecord made = CreateRecord(FirstDeviceCode(KindOfButton(button)), 0);
        return DeviceShapes(button, &made);
    }
    SvgDrawing drawing;
    switch (button) {
        case StripButton::MasterTemplate:
        case StripButton::Master:
            DrawMaster(drawing, button, *record);
            break;
        case StripButton::Backlight:
            DrawBacklight(drawing, button, *record);
            break;
        case StripButton::Code4:
            DrawDisplay(drawing, button);
            break;
        case StripButton::KM064:
            DrawExtension(drawing, button, *record);
            break;
        case StripButton::MCR:
            DrawBadgeReader(drawing, button, *record);
            break;
        case StripButton::ICCR:
            DrawChipCardUnit(drawing, button);
            break;
        case StripButton::Keypad:
            DrawKeypad(drawing, button, *record);
            break;
    }
    return drawing.Shapes();
}

std::string DevicePicture(StripButton button, const ModuleRecord* record)
{
    return SvgDocument(ShapeOf(button).width, ShapeOf(button).height, DeviceShapes(button, record));
}

}  // namespace kelvora
