#include "setup/KeyMapPicture.h"

#include <algorithm>
#include <array>
#include <optional>

#include "keymap/Keyboard.h"
#include "keymap/Models.h"
#include "platform/TextLines.h"
#include "setup/SetupError.h"

namespace kelvora {

namespace {

constexpr std::string_view KeyMapKey = "KeyMap = ";
constexpr std::string_view KeyMapIndent = "         ";
constexpr std::string_view RowEnd = " _\r\n";

constexpr char UnusedLetter = '=';

// The letters of a picture of whole rows.
std::string DrawPicture(std::string_view keyMap, std::size_t columns)
{
    std::string picture(keyMap.size() / columns * columns, UnusedLetter);
    const auto draw = [&](std::size_t cell, char letter) {
        if (cell < picture.size())
            picture[cell] = letter;
    };
    for (std::size_t i = 0; i < picture.size(); ++i) {
        switch (keyMap[i]) {
            case KeyType::Single:
                draw(i, 'S');
                break;
            case KeyType::DoubleVertical:
                draw(i, 'V');
                draw(i + columns, 'V');
                break;
            case KeyType::DoubleHorizontal:
                draw(i, 'H');
                draw(i + 1, 'H');
                break;
            case KeyType::Quadruple:
                draw(i, 'Q');
                draw(i + 1, 'Q');
                draw(i + columns, 'Q');
                draw(i + columns + 1, 'Q');
                break;
            case KeyType::NoKey:
                draw(i, '_');
                break;
            default:
                break;
        }
    }
    return picture;
}

bool IsLargerKeyType(char type)
{
    return KeyType::IsWide(type) || KeyType::IsTall(type);
}

// Whether the larger key whose first cell is at `i` is whole; its other cells become "=", so that they are
// not taken for keys of their own.
bool TakeWholeKey(std::string& cells, std::size_t i, std::size_t columns)
{
    const char letter = cells[i];
    const bool across = letter == 'H' || letter == 'Q';
    const bool down = letter == 'V' || letter == 'Q';
    const auto take = [&](std::size_t cell) {
        if (cell >= cells.size() || cells[cell] != letter)
            return false;
        cells[cell] = UnusedLetter;
        return true;
    };
    const bool hasRoom = !across || (i + 1) % columns != 0;
    return hasRoom && (!across || take(i + 1)) && (!down || take(i + columns)) &&
           (!(across && down) || take(i + columns + 1));
}

// Stands in a map for a letter that means nothing.
constexpr char NoType = '\0';

// The key type that each letter stands for, by the letter's code. Key types may stand for themselves.
constexpr std::array<char, 256> KeyTypesOfLetters = [] {
    std::array<char, 256> types{};
    for (const char type : {KeyType::Unused, KeyType::Single, KeyType::DoubleVertical,
                            KeyType::DoubleHorizontal, KeyType::Quadruple, KeyType::NoKey, KeyType::Absent})
        types[static_cast<unsigned char>(type)] = type;
    types['S'] = KeyType::Single;
    types['V'] = KeyType::DoubleVertical;
    types['H'] = KeyType::DoubleHorizontal;
    types['Q'] = KeyType::Quadruple;
    types['_'] = KeyType::NoKey;
    types[UnusedLetter] = KeyType::Unused;
    return types;
}();

char KeyTypeOfLetter(char letter)
{
    return KeyTypesOfLetters[static_cast<unsigned char>(letter)];
}

// The key map that a picture shows; none when a larger key is not whole.
std::optional<std::string> MapOfPicture(std::string_view picture, std::size_t columns)
{
    constexpr std::string_view LargerKeys = "VHQ";
    std::string cells(picture);
    for (auto i = cells.find_first_of(LargerKeys); i != std::string::npos;
         i = cells.find_first_of(LargerKeys, i + 1))
        if (!TakeWholeKey(cells, i, columns))
            return std::nullopt;
    std::ranges::transform(cells, cells.begin(), KeyTypeOfLetter);
    return cells;
}

}  // namespace

void AppendKeyMapPicture(std::string& text, std::string_view keyMap, std::size_t columns)
{
    const std::string picture = DrawPicture(keyMap, columns);
    text += KeyMapKey;
    text.append(picture, 0, columns);
    for (std::size_t row = columns; row + 1 < picture.size(); row += columns) {
        text += RowEnd;
        text += KeyMapIndent;
        text.append(picture, row, columns);
    }
    text += LineEnd;
}

bool CanBeDrawn(std::string_view keyMap, std::size_t columns)
{
    std::string drawn(keyMap.substr(0, keyMap.size() / columns * columns));
    std::ranges::replace(drawn, KeyType::Absent, KeyType::Unused);
    return MapOfPicture(DrawPicture(drawn, columns), columns) == drawn;
}

void ReadKeyMapPicture(std::string_view picture, ModuleRecord& record, std::size_t line)
{
    const std::size_t columns = record.Columns;
    if (picture.size() != static_cast<std::uint8_t>(record.Columns * record.Rows))
        RejectLine(line, Expected::KeyMapSize);
    const std::optional<std::string> cells = MapOfPicture(picture, columns);
    if (!cells)
        RejectLine(line, Expected::WholeKeys);
    if (cells->find(NoType) != std::string::npos)
        RejectLine(line, Expected::KeyMapLetter);
    // Letters were found whole above; key types typed in their place may overlap, and could not be written.
    const bool hasTypedKeys = std::ranges::any_of(picture, IsLargerKeyType);
    if (!IsKeyMapValid(*cells, record.Rows, record.Columns) || (hasTypedKeys && !CanBeDrawn(*cells, columns)))
        RejectLine(line, Expected::WholeKeys);
    record.KeyMap.replace(0, cells->size(), *cells);
}

}  // namespace kelvora
