#include "picture/SetupSheet.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "keymap/Models.h"
#include "picture/KeyGridPicture.h"
#include "picture/SheetBlocks.h"
#include "picture/SheetText.h"
#include "picture/StripPicture.h"
#include "picture/SvgDrawing.h"
#include "platform/Encoding.h"
#include "platform/LocalTime.h"
#include "setup/SetupTexts.h"

namespace kelvora {

namespace {

// In twips, 1440 to an inch.
constexpr int Margin = 850;  // what every printer can print on
constexpr int TextRight = SheetWidth - Margin;
constexpr int RoomAcross = SheetWidth - 2 * Margin;
constexpr int NameSize = 380;
constexpr int TitleSize = 240;
constexpr int TextSize = 190;
constexpr int LineHeight = 250;
constexpr int TitleHeight = 340;
constexpr int BlockGap = 320;
constexpr int StripTop = Margin + 1150;
constexpr int LegendTop = SheetHeight - Margin - 620;
constexpr int LegendCell = 300;
constexpr int LegendSize = 145;
constexpr int LegendGap = 60;

// The side of a grid position: the largest is what the real keys have.
constexpr int LargestCell = 1020;
constexpr int CellStep = 20;
constexpr int SmallestCell = 300;

constexpr std::string_view FaintColour = "#444444";

constexpr Lettering Left(int size, bool bold = false)
{
    return {size, "#000000", Lettering::Anchor::Start, bold};
}

// Where a block stands, for one size of the keys.
struct PlacedBlock {
    const SheetBlock* block;
    std::vector<std::string> lines;
    int left, top, height;
};

// As wide as its grid, or as its longest text where that is wider; bold letters take more room.
int BlockWidth(const SheetBlock& block, int cell)
{
    int width = TextWidth(block.title, TitleSize * 11 / 10);
    for (const std::string& fact : block.facts)
        width = std::max(width, TextWidth(fact, TextSize));
    return std::min(std::max(width, block.grid ? block.grid->Columns * cell : 0), RoomAcross);
}

/// Sets the blocks from left to right, and on from the left below what does not fit beside the ones before.
/// Their height together is what `bottom` comes to.
std::vector<PlacedBlock> PlaceBlocks(const std::vector<SheetBlock>& blocks, int top, int cell, int& bottom)
{
    std::vector<PlacedBlock> placed;
    int left = Margin;
    bottom = top;
    for (const SheetBlock& block : blocks) {
        const int width = BlockWidth(block, cell);
        if (left > Margin && left + width > TextRight) {
            left = Margin;
            top = bottom + BlockGap;
        }
        PlacedBlock place{&block, WrappedParts(block.facts, TextSize, width), left, top, TitleHeight};
        place.height += static_cast<int>(place.lines.size()) * LineHeight;
        if (block.grid)
            place.height += DrawnKeyRows(*block.grid) * cell;
        bottom = std::max(bottom, top + place.height);
        left += width + BlockGap;
        placed.push_back(std::move(place));
    }
    return placed;
}

bool IsTooWide(const std::vector<SheetBlock>& blocks, int cell)
{
    return std::ranges::any_of(blocks, [&](const SheetBlock& block) {
        return block.grid && block.grid->Columns * cell > RoomAcross;
    });
}

class SheetPainter {
public:
    SheetPainter(const SetupDocument& document, const MessageCatalogue& catalogue)
        : document_(document), catalogue_(catalogue)
    {
    }

    std::string Paint(const SheetHeading& heading)
    {
        PaintHeading(heading);
        const std::vector<SheetBlock> blocks = SheetBlocks(document_, catalogue_);
        if (blocks.empty())
            drawing_.Text(Margin, StripTop + TitleSize, Left(TitleSize), Word(Message::SheetEmpty));
        else
            PaintBlocks(blocks, PaintStrip());
        if (heading.pages > 1)
            drawing_.Text(
                TextRight, SheetHeight - Margin, {TextSize, FaintColour, Lettering::Anchor::End},
                Utf8FromText(catalogue_.Word(Message::SheetPage) + std::to_string(heading.page) + "/") +
                    std::to_string(heading.pages));
        return SvgSheet(drawing_.Shapes());
    }

private:
    std::string Word(const MessageId& message) const { return Utf8FromText(catalogue_.Caption(message)); }

    void PaintHeading(const SheetHeading& heading)
    {
        constexpr int NameMiddle = Margin + 200;
        constexpr int FileMiddle = Margin + 600;
        const int room = RoomAcross - TextWidth(heading.date, TextSize) - BlockGap;
        // Bold letters are wider.
        drawing_.Text(Margin, NameMiddle, Left(NameSize, true),
                      Shortened(heading.name, NameSize * 6 / 5, room));
        drawing_.Text(TextRight, NameMiddle, {TextSize, FaintColour, Lettering::Anchor::End}, heading.date);
        std::string remark = heading.isChanged ? Word(Message::SheetNotSaved) : std::string();
        if (!heading.file.empty() && !remark.empty())
            remark.insert(0, ", ");
        const std::string file = Shortened(heading.file, TextSize, RoomAcross - TextWidth(remark, TextSize));
        if (!heading.file.empty() || !remark.empty())
            drawing_.Text(Margin, FileMiddle, Left(TextSize), file + remark);
        drawing_.Line(Margin, Margin + 880, TextRight, Margin + 880, {"none", "#000000", 15});
    }

    /// Returns where the strip ends.
    int PaintStrip()
    {
        const StripSize strip = DrawStrip(drawing_, document_.Modules, Margin, StripTop);
        return StripTop + (strip.height > 0 ? strip.height + BlockGap : 0);
    }

    void PaintBlocks(const std::vector<SheetBlock>& blocks, int top)
    {
        int cell = LargestCell + CellStep;
        int bottom = 0;
        std::vector<PlacedBlock> placed;
        do {
            cell -= CellStep;
            placed = PlaceBlocks(blocks, top, cell, bottom);
        } while (cell > SmallestCell && (IsTooWide(blocks, cell) || bottom > LegendTop - BlockGap));
        for (const PlacedBlock& place : placed)
            PaintBlock(place, cell);
        if (std::ranges::any_of(blocks, [](const SheetBlock& block) { return block.grid != nullptr; }))
            PaintLegend();
    }

    void PaintBlock(const PlacedBlock& place, int cell)
    {
        const SheetBlock& block = *place.block;
        drawing_.Text(place.left, place.top + TitleSize / 2, Left(TitleSize, true), block.title);
        int y = place.top + TitleHeight;
        for (const std::string& line : place.lines) {
            drawing_.Text(place.left, y + TextSize / 2 - 30, Left(TextSize), line);
            y += LineHeight;
        }
        if (block.grid)
            DrawKeyGrid(drawing_, *block.grid, {place.left, y, cell, block.firstKeyNumber, &PaperLook});
    }

    /// What the shapes of the keys mean, spread over the width of the page.
    void PaintLegend()
    {
        constexpr std::array Types{
            std::pair{KeyType::Single, Message::KeyStateSingle},
            std::pair{KeyType::DoubleVertical, Message::KeyStateVertical},
            std::pair{KeyType::DoubleHorizontal, Message::KeyStateHorizontal},
            std::pair{KeyType::Quadruple, Message::KeyStateQuadruple},
            std::pair{KeyType::Unused, Message::KeyStateUnused},
        };
        const auto widthOf = [&](const auto& row) {
            return CapWidth(row.first) + LegendGap + TextWidth(Word(row.second), LegendSize);
        };
        int left = RoomAcross;
        for (const auto& row : Types)
            left -= widthOf(row);
        const int between = std::max(0, left / static_cast<int>(Types.size() - 1));
        left = Margin;
        for (const auto& row : Types) {
            const auto& [type, name] = row;
            const int middle = LegendTop + LegendCell;
            drawing_.Group(left, middle - (KeyType::IsTall(type) ? LegendCell : LegendCell / 2),
                           KeyCapShapes(type, LegendCell, PaperLook));
            drawing_.Text(left + CapWidth(type) + LegendGap, middle, Left(LegendSize), Word(name));
            left += widthOf(row) + between;
        }
    }

    static int CapWidth(char type) { return KeyType::IsWide(type) ? 2 * LegendCell : LegendCell; }

    const SetupDocument& document_;
    const MessageCatalogue& catalogue_;
    SvgDrawing drawing_;
};

}  // namespace

std::string SheetDate(std::chrono::local_seconds time)
{
    constexpr std::size_t ToTheMinute = std::string_view("2026-03-09 07:05").size();
    return LocalTimeText(time).substr(0, ToTheMinute);
}

std::string SetupSheet(const SetupDocument& document, const SheetHeading& heading,
                       const MessageCatalogue& catalogue)
{
    return SheetPainter(document, catalogue).Paint(heading);
}

}  // namespace kelvora
