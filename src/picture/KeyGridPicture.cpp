#include "picture/KeyGridPicture.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "keymap/KeyGrid.h"
#include "keymap/Keyboard.h"
#include "keymap/Models.h"
#include "picture/PictureMarks.h"
#include "picture/SvgDrawing.h"
#include "setup/ModuleRecord.h"

namespace kelvora {

namespace {

constexpr int NumberedCell = 600;
constexpr int NumberedMargin = 60;

class GridPainter {
public:
    GridPainter(SvgDrawing& drawing, const ModuleRecord& record, const KeyGridPlace& place)
        : drawing_(drawing),
          record_(record),
          place_(place),
          look_(*place.look),
          columns_(record.Columns),
          rows_(DrawnKeyRows(record)),
          gap_(place.cell / 15)
    {
    }

    /// A piece of ground for each run of keys along a row, and along a column: they overlap, so that no seam
    /// shows between them and only the corners of the whole are round.
    void PaintGround()
    {
        for (int row = 0; row < rows_; ++row)
            for (int column = 0, end = 0; column < columns_; column = end + 1) {
                for (end = column; end < columns_ && KeyType::HasKey(TypeAt(row, end));)
                    ++end;
                PaintGroundPiece(row, column, 1, end - column);
            }
        for (int column = 0; column < columns_; ++column)
            for (int row = 0, end = 0; row < rows_; row = end + 1) {
                for (end = row; end < rows_ && KeyType::HasKey(TypeAt(end, column));)
                    ++end;
                PaintGroundPiece(row, column, end - row, 1);
            }
    }

    void PaintKeys()
    {
        for (int position = 1; position <= rows_ * columns_; ++position)
            if (const char type = TypeAt(position); IsDrawn(position, type))
                PaintKey(CapAt(position, type), position, type);
    }

    /// A covered position is part of its larger key, which the ring goes around.
    void PaintRing()
    {
        int position = place_.marks ? place_.marks->framed : 0;
        if (position < 1 || position > rows_ * columns_)
            return;
        if (const int owner = CoveringKey(position, columns_, record_.KeyMap); owner != 0)
            position = owner;
        DrawRing(drawing_, CapAt(position, TypeAt(position)), {2 * gap_, gap_, 0});
    }

private:
    void PaintGroundPiece(int row, int column, int rows, int columns)
    {
        const int overlap = gap_ / 2;
        if (rows > 0 && columns > 0)
            drawing_.Rect(
                {place_.left + column * place_.cell - overlap, place_.top + row * place_.cell - overlap,
                 columns * place_.cell + 2 * overlap, rows * place_.cell + 2 * overlap},
                2 * gap_, {look_.ground});
    }

    char TypeAt(int row, int column) const { return TypeAt(row * columns_ + column + 1); }
    char TypeAt(int position) const
    {
        const auto index = static_cast<std::size_t>(position) - 1;
        return index < record_.KeyMap.size() ? record_.KeyMap[index] : KeyType::Absent;
    }

    bool IsDrawn(int position, char type) const
    {
        return KeyType::HasKey(type) &&
               !(type == KeyType::Unused && IsCovered(position, columns_, record_.KeyMap));
    }

    /// A cap that would stick out of the grid ends at its edge.
    KeyRect CapAt(int position, char type) const
    {
        const int row = (position - 1) / columns_;
        const int column = (position - 1) % columns_;
        const int side = place_.cell - 2 * gap_;
        const KeyRect single{place_.left + column * place_.cell + gap_, place_.top + row * place_.cell + gap_,
                             side, side};
        KeyRect cap = SizeKey(single, type, 2 * gap_);
        cap.width = std::min(cap.width, place_.left + columns_ * place_.cell - gap_ - cap.left);
        cap.height = std::min(cap.height, place_.top + rows_ * place_.cell - gap_ - cap.top);
        return cap;
    }

    void PaintKey(const KeyRect& cap, int position, char type)
    {
        if (type == KeyType::Unused)
            PaintUnused(cap);
        else
            PaintCap(cap);
        if (place_.marks && std::ranges::find(place_.marks->marked, position) != place_.marks->marked.end())
            DrawMark(drawing_, cap, {2 * gap_, gap_, place_.cell * 3 / 10});
        PaintNumber(cap, position, type == KeyType::Unused);
    }

    void PaintCap(const KeyRect& cap)
    {
        const int edge = look_.edge == "none" ? 0 : std::max(1, gap_ / 3);
        drawing_.Rect(cap, 2 * gap_, {look_.side, look_.edge, edge});
        drawing_.Rect({cap.left + gap_, cap.top + gap_ / 2, cap.width - 2 * gap_, cap.height - 5 * gap_ / 2},
                      2 * gap_, {look_.face});
    }

    void PaintUnused(const KeyRect& cap)
    {
        const int width = std::max(1, place_.cell / 22);
        const KeyRect inner{cap.left + width, cap.top + width, cap.width - 2 * width, cap.height - 2 * width};
        drawing_.Rect(inner, 2 * gap_, {"none", look_.unused, width});
        if (!look_.strokeBehindNumber.empty())
            PaintStroke(inner, {"none", look_.strokeBehindNumber, width});
        else if (!place_.firstKeyNumber)
            PaintStroke(inner, {"none", look_.unused, width});
    }

    void PaintStroke(const KeyRect& inner, const Paint& paint)
    {
        drawing_.Line(inner.left + 2 * gap_, inner.top + inner.height - 2 * gap_,
                      inner.left + inner.width - 2 * gap_, inner.top + 2 * gap_, paint);
    }

    void PaintNumber(const KeyRect& cap, int position, bool unused)
    {
        if (!place_.firstKeyNumber)
            return;
        std::string number = std::to_string(*place_.firstKeyNumber + position - 1);
        const bool inBrackets = unused && !look_.strokeBehindNumber.empty();
        if (inBrackets)
            number = "(" + number + ")";
        // Five characters have to fit on a cap.
        drawing_.Text(cap.left + cap.width / 2, cap.top + cap.height / 2 - gap_ / 2,
                      place_.cell * (inBrackets ? 25 : 30) / 100, unused ? look_.unused : look_.number,
                      number);
    }

    SvgDrawing& drawing_;
    const ModuleRecord& record_;
    const KeyGridPlace& place_;
    const KeyGridLook& look_;
    int columns_;
    int rows_;
    int gap_;  ///< between a cap and the edge of its grid position
};

}  // namespace

int DrawnKeyRows(const ModuleRecord& record)
{
    int rows = record.Rows;
    for (std::size_t index = 0; index < record.KeyMap.size() && record.Columns > 0; ++index)
        if (KeyType::HasKey(record.KeyMap[index]))
            rows = std::max(rows, static_cast<int>(index / record.Columns) + 1);
    return rows;
}

void DrawKeyGrid(SvgDrawing& drawing, const ModuleRecord& record, const KeyGridPlace& place)
{
    GridPainter painter(drawing, record, place);
    painter.PaintGround();
    painter.PaintKeys();
    painter.PaintRing();
}

std::string KeyCapShapes(char type, int cell, const KeyGridLook& look)
{
    ModuleRecord record;
    record.Rows = KeyType::IsTall(type) ? 2 : 1;
    record.Columns = KeyType::IsWide(type) ? 2 : 1;
    record.KeyMap.assign(static_cast<std::size_t>(record.Rows) * record.Columns, KeyType::Unused);
    record.KeyMap.front() = type;
    SvgDrawing drawing;
    const KeyGridPlace place{0, 0, cell, {}, &look};
    GridPainter painter(drawing, record, place);
    painter.PaintGround();
    painter.PaintKeys();
    return drawing.Shapes();
}

std::string KeyGridPicture(const ModuleRecord& record, int firstKeyNumber, const KeyGridMarks& marks)
{
    SvgDrawing drawing;
    DrawKeyGrid(drawing, record,
                {NumberedMargin, NumberedMargin, NumberedCell, firstKeyNumber, &ScreenLook, &marks});
    return SvgDocument(record.Columns * NumberedCell + 2 * NumberedMargin,
                       DrawnKeyRows(record) * NumberedCell + 2 * NumberedMargin, drawing.Shapes());
}

int PositionInPicture(const ModuleRecord& record, int x, int y)
{
    const int column = (x - NumberedMargin) / NumberedCell;
    const int row = (y - NumberedMargin) / NumberedCell;
    const bool inside =
        x >= NumberedMargin && y >= NumberedMargin && column < record.Columns && row < DrawnKeyRows(record);
    return inside ? row * record.Columns + column + 1 : 0;
}

}  // namespace kelvora
