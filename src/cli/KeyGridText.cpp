#include "cli/KeyGridText.h"

#include "keymap/Keyboard.h"
#include "keymap/Models.h"

namespace kelvora {

namespace {

// Room for a number of three digits in brackets.
constexpr std::size_t CellWidth = 5;

class GridDrawing {
public:
    GridDrawing(const ModuleRecord& record, int firstKeyNumber)
        : map_(record.KeyMap), rows_(record.Rows), columns_(record.Columns), first_(firstKeyNumber)
    {
    }

    int Rows() const { return rows_; }

    // The line above a row of keys, from 0 to the number of rows.
    std::string Border(int row) const
    {
        std::string line;
        for (int column = 0; column <= columns_; ++column) {
            const bool corner = IsHorizontal(row, column - 1) || IsHorizontal(row, column) ||
                                IsVertical(row - 1, column) || IsVertical(row, column);
            line += corner ? '+' : ' ';
            line.append(CellWidth, IsHorizontal(row, column) ? '-' : ' ');
        }
        return line;
    }

    std::string Keys(int row) const
    {
        std::string line;
        for (int column = 0; column <= columns_; ++column) {
            line += IsVertical(row, column) ? '|' : ' ';
            std::string label = Label(row, column);
            label.insert(0, (CellWidth - label.size()) / 2, ' ');
            label.resize(CellWidth, ' ');
            line += label;
        }
        return line;
    }

private:
    char TypeAt(int cell) const
    {
        const auto index = static_cast<std::size_t>(cell);
        return index < map_.size() ? map_[index] : KeyType::Absent;
    }

    // The key that takes that cell, by its position from 1; 0 for none.
    int Owner(int row, int column) const
    {
        if (row < 0 || row >= rows_ || column < 0 || column >= columns_)
            return 0;
        const int cell = row * columns_ + column;
        const int cover = CoveringKey(cell + 1, columns_, map_);
        return cover == 0 && KeyType::HasKey(TypeAt(cell)) ? cell + 1 : cover;
    }

    bool IsHorizontal(int row, int column) const { return Owner(row - 1, column) != Owner(row, column); }
    bool IsVertical(int row, int column) const { return Owner(row, column - 1) != Owner(row, column); }

    std::string Label(int row, int column) const
    {
        const int cell = row * columns_ + column;
        if (column >= columns_ || Owner(row, column) != cell + 1)
            return {};
        const std::string number = std::to_string(first_ + cell);
        return TypeAt(cell) == KeyType::Unused ? "(" + number + ")" : number;
    }

    std::string_view map_;
    int rows_, columns_, first_;
};

void AppendLine(std::string& text, std::string_view indent, std::string_view line)
{
    text.append(indent).append(line.substr(0, line.find_last_not_of(' ') + 1)).append("\n");
}

}  // namespace

std::string KeyGridText(const ModuleRecord& record, int firstKeyNumber, std::string_view indent)
{
    const GridDrawing drawing(record, firstKeyNumber);
    std::string text;
    for (int row = 0; row < drawing.Rows(); ++row) {
        AppendLine(text, indent, drawing.Border(row));
        AppendLine(text, indent, drawing.Keys(row));
    }
    AppendLine(text, indent, drawing.Border(drawing.Rows()));
    return text;
}

}  // namespace kelvora
