#include "picture/KeyGridPicture.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "keymap/KeyGrid.h"
#include "keymap/Keyboard.h"
#include "keymap/Models.h"
#include "picture/SvgDrawing.h"
#include "setup/ModuleRecord.h"

namespace kelvora {

namespace {

constexpr int NumberedCell = 600;
constexpr int NumberedMargin = 60;

// The two parts of a cap, and what lies below it.
constexpr Paint Ground{"#434a54"};
constexpr Paint CapSide{"#bcc3cc"};
constexpr Paint CapFace{"#f6f7f9"};
constexpr std::string_view UnusedColour = "#98a0ab";
constexpr std::string_view NumberColour = "#22272e";

class GridPainter {
public:
    GridPainter(SvgDrawing& drawing, const ModuleRecord& record, const KeyGridPlace& place)
        : drawing_(drawing),
          record_(record),
          place_(place),
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
        for (int row = 0; row < rows_; ++row) {
            for (int column = 0; column < columns_; ++column) {
                const char type = TypeAt(row, column);
                const int position = row * columns_ + column + 1;
                if (!KeyType::HasKey(type) ||
                    (type == KeyType::Unused && IsCovered(position, columns_, record_.KeyMap)))
                    continue;
                const KeyRect cap = CapAt(row, column, type);
                if (type == KeyType::Unused)
                    PaintUnused(cap);
                else
                    PaintCap(cap);
                PaintNumber(cap, position, type == KeyType::Unused ? UnusedColour : NumberColour);
            }
        }
    }

private:
    void PaintGroundPiece(int row, int column, int rows, int columns)
    {
        const int overlap = gap_ / 2;
        if (rows > 0 && columns > 0)
            drawing_.Rect(
                {place_.left + column * place_.cell - overlap, place_.top + row * place_.cell - overlap,
                 columns * place_.cell + 2 * overlap, rows * place_.cell + 2 * overlap},
                2 * gap_, Ground);
    }

    char TypeAt(int row, int column) const
    {
        const auto index = static_cast<std::size_t>(row) * record_.Columns + static_cast<std::size_t>(column);
        return index < record_.KeyMap.size() ? record_.KeyMap[index] : KeyType::Absent;
    }

    /// A cap that would stick out of the grid ends at its edge.
    KeyRect CapAt(int row, int column, char type) const
    {
        const auto side = static_cast<std::int16_t>(place_.cell - 2 * gap_);
        const auto between = static_cast<std::int16_t>(2 * gap_);
        const KeyRect single{place_.left + column * place_.cell + gap_, place_.top + row * place_.cell + gap_,
                             side, side};
        KeyRect cap = SizeKey(single, type, {side, side, between, between});
        cap.width = std::min(cap.width, place_.left + columns_ * place_.cell - gap_ - cap.left);
        cap.height = std::min(cap.height, place_.top + rows_ * place_.cell - gap_ - cap.top);
        return cap;
    }

    void PaintCap(const KeyRect& cap)
    {
        drawing_.Rect(cap, 2 * gap_, CapSide);
        drawing_.Rect({cap.left + gap_, cap.top + gap_ / 2, cap.width - 2 * gap_, cap.height - 5 * gap_ / 2},
                      2 * gap_, CapFace);
    }

    void PaintUnused(const KeyRect& cap)
    {
        const int width = std::max(1, place_.cell / 22);
        const KeyRect inner{cap.left + width, cap.top + width, cap.width - 2 * width, cap.height - 2 * width};
        drawing_.Rect(inner, 2 * gap_, {"none", UnusedColour, width});
        // A number would not be readable through the stroke.
        if (!place_.firstKeyNumber)
            drawing_.Line(inner.left + 2 * gap_, inner.top + inner.height - 2 * gap_,
                          inner.left + inner.width - 2 * gap_, inner.top + 2 * gap_,
                          {"none", UnusedColour, width});
    }

    void PaintNumber(const KeyRect& cap, int position, std::string_view colour)
    {
        if (place_.firstKeyNumber)
            drawing_.Text(cap.left + cap.width / 2, cap.top + cap.height / 2 - gap_ / 2, place_.cell * 3 / 10,
                          colour, std::to_string(*place_.firstKeyNumber + position - 1));
    }

    SvgDrawing& drawing_;
    const ModuleRecord& record_;
    const KeyGridPlace& place_;
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
}

std::string KeyGridPicture(const ModuleRecord& record, int firstKeyNumber)
{
    SvgDrawing drawing;
    DrawKeyGrid(drawing, record, {NumberedMargin, NumberedMargin, NumberedCell, firstKeyNumber});
    return SvgDocument(record.Columns * NumberedCell + 2 * NumberedMargin,
                       DrawnKeyRows(record) * NumberedCell + 2 * NumberedMargin, drawing.Shapes());
}

}  // namespace kelvora
