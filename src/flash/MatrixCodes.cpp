#include "flash/MatrixCodes.h"

#include <algorithm>

#include "platform/AsciiCase.h"

namespace kelvora {

namespace {

// What a character of a list is, by its place here.
constexpr std::string_view Alphabet = ",0123456789ABCDEFGHIJ";
constexpr std::size_t FirstDigit = 1;
constexpr std::size_t FirstLetter = 11;

// Bytes of the key table for a matrix line, and for a matrix column.
constexpr int LineSize = 2;
constexpr int ColumnSize = 16;

// A key's last offset before what stands for no contact. A number beyond is cut here, far from overflowing.
constexpr int LastOffset = 254;

int AppendDigit(int number, std::size_t digit)
{
    return std::min(number * 10 + static_cast<int>(digit), LastOffset);
}

struct Entry {
    int line = 0;
    int column = 0;
    bool hasDigit = false;  ///< also where the column is 0 still

    bool IsEmpty() const { return line == 0; }
    int Offset() const { return (line - 1) * LineSize + (column - 1) * ColumnSize; }
    bool IsContact() const { return column > 0 && Offset() <= LastOffset; }
};

// Takes a digit or letter, by its place in the alphabet; false where it cannot stand.
bool Take(Entry& entry, std::size_t place)
{
    if (place >= FirstLetter) {
        if (entry.hasDigit)
            return false;
        entry.line = AppendDigit(entry.line, place - FirstLetter + 1);
        return true;
    }
    if (entry.line == 0)
        return false;
    entry.column = AppendDigit(entry.column, place - FirstDigit);
    entry.hasDigit = true;
    return true;
}

bool Close(Entry& entry, std::string& positions)
{
    if (!entry.IsEmpty() && !entry.IsContact())
        return false;
    positions += entry.IsEmpty() ? NoContact : static_cast<char>(entry.Offset());
    entry = {};
    return true;
}

}  // namespace

std::string ParseMatrixCodes(std::string_view list)
{
    constexpr std::size_t Multiple = 16;
    std::string positions;
    Entry entry;
    for (const char character : list) {
        const std::size_t place = Alphabet.find(AsciiUpper(character));
        if (place == std::string_view::npos)
            continue;
        if (place == 0 ? !Close(entry, positions) : !Take(entry, place))
            return positions;
    }
    if (!entry.IsEmpty() && !Close(entry, positions))
        return positions;
    positions.resize((positions.size() + Multiple - 1) / Multiple * Multiple, NoContact);
    return positions;
}

}  // namespace kelvora
