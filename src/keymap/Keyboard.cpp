#include "keymap/Keyboard.h"

#include "keymap/Models.h"

namespace kelvora {

namespace {

constexpr std::uint8_t SingleBit = 1;
constexpr std::uint8_t VerticalBit = 2;
constexpr std::uint8_t HorizontalBit = 4;
constexpr std::uint8_t QuadrupleBit = 8;
constexpr std::uint8_t AllBits = SingleBit | VerticalBit | HorizontalBit | QuadrupleBit;

/// The index in a device table that says "no key".
constexpr std::size_t NoKeyIndex = 255;

/// What stands outside a map; no key type.
constexpr char Outside = '\0';

char At(std::string_view map, int position)
{
    return position >= 1 && static_cast<std::size_t>(position) <= map.size()
               ? map[static_cast<std::size_t>(position) - 1]
               : Outside;
}

void Put(std::string& map, int position, char type)
{
    if (At(map, position) != Outside)
        map[static_cast<std::size_t>(position) - 1] = type;
}

/// The cells that a key of that type covers besides its own, ended by 0.
std::array<int, 4> CoveredCells(int position, char type, int columns)
{
    switch (type) {
        case KeyType::DoubleVertical:
            return {position + columns};
        case KeyType::DoubleHorizontal:
            return {position + 1};
        case KeyType::Quadruple:
            return {position + 1, position + columns, position + columns + 1};
        default:
            return {};
    }
}

/// A key may always become a single key again and keep its own type.
std::uint8_t OwnTypes(char type)
{
    switch (type) {
        case KeyType::Single:
            return SingleBit;
        case KeyType::DoubleVertical:
            return SingleBit | VerticalBit;
        case KeyType::DoubleHorizontal:
            return SingleBit | HorizontalBit;
        case KeyType::Quadruple:
            return AllBits;
        default:
            return 0;
    }
}

bool Walk(std::string_view map, std::string* repaired, std::uint8_t rows, std::uint8_t columns)
{
    const int cells = rows * columns;
    if (map.size() < static_cast<std::size_t>(cells))
        return false;
    for (int position = 1; position <= cells; ++position)
        for (const int covered : CoveredCells(position, At(map, position), columns)) {
            if (covered == 0)
                break;
            const char type = At(map, covered);
            if (type == KeyType::Unused)
                continue;
            if (repaired == nullptr || type == Outside)
                return false;
            Put(*repaired, covered, KeyType::Unused);
        }
    return true;
}

}  // namespace

std::uint8_t AllowedKeyTypes(int position, int columns, std::string_view map)
{
    std::uint8_t mask = OwnTypes(At(map, position));
    if (mask == 0)
        return 0;
    if (position % columns > 0) {
        char right = At(map, position + 1);
        if (right == Outside)
            return mask;
        if (right == KeyType::Unused) {
            const char above = At(map, position + 1 - columns);
            right = KeyType::IsTall(above) ? above : KeyType::Single;
        }
        if (right == KeyType::Single)
            mask |= HorizontalBit;
    }
    char below = At(map, position + columns);
    if (below == Outside)
        return mask;
    if (below == KeyType::Unused) {
        const char left = position % columns != 1 ? At(map, position + columns - 1) : KeyType::Single;
        below = KeyType::IsWide(left) ? left : KeyType::Single;
    }
    if (below == KeyType::Single)
        mask |= VerticalBit;
    if (mask == (SingleBit | VerticalBit | HorizontalBit)) {
        const char diagonal = At(map, position + columns + 1);
        if (diagonal == KeyType::Single || diagonal == KeyType::Unused)
            mask = AllBits;
    }
    return mask;
}

bool CheckKeyMap(std::string& map, std::uint8_t rows, std::uint8_t columns, bool repair)
{
    return Walk(map, repair ? &map : nullptr, rows, columns);
}

bool IsKeyMapValid(std::string_view map, std::uint8_t rows, std::uint8_t columns)
{
    return Walk(map, nullptr, rows, columns);
}

std::string KeyMapFromDeviceTable(std::string_view table, std::string_view positions, std::size_t base,
                                  std::size_t count)
{
    std::string map;
    for (std::size_t place = 0; place < count; ++place) {
        const std::size_t index =
            place < positions.size() ? static_cast<unsigned char>(positions[place]) : NoKeyIndex;
        if (index == NoKeyIndex || base + index + 1 >= table.size()) {
            map += KeyType::NoKey;
            continue;
        }
        const auto first = static_cast<unsigned char>(table[base + index]);
        const auto second = static_cast<unsigned char>(table[base + index + 1]);
        if (second > 1 || (first & 0x3F) != 0)
            map += static_cast<char>(KeyType::Single + (first >> 6));
        else
            map += KeyType::Unused;
    }
    return map;
}

int CoveringKey(int position, int columns, std::string_view map)
{
    if (At(map, position) != KeyType::Unused)
        return 0;
    if (KeyType::IsTall(At(map, position - columns)))
        return position - columns;
    if (position % columns == 1)
        return 0;
    if (KeyType::IsWide(At(map, position - 1)))
        return position - 1;
    const int diagonal = position - columns - 1;
    return At(map, diagonal) == KeyType::Quadruple ? diagonal : 0;
}

bool IsCovered(int position, int columns, std::string_view map)
{
    return CoveringKey(position, columns, map) != 0;
}

void SetKeyType(int position, char newType, int columns, std::string& map)
{
    const char oldType = At(map, position);
    if (oldType == Outside)
        return;
    for (const int covered : CoveredCells(position, oldType, columns))
        Put(map, covered, KeyType::Single);
    Put(map, position, newType);
    for (const int covered : CoveredCells(position, newType, columns))
        Put(map, covered, KeyType::Unused);
}

}  // namespace kelvora
