#include "flash/KeyTables.h"

#include <algorithm>

#include "flash/MatrixCodes.h"
#include "keymap/Keyboard.h"
#include "keymap/Models.h"
#include "setup/ModuleRecord.h"

namespace kelvora {

namespace {

// A matrix column's bytes in a key table.
constexpr std::size_t ColumnBytes = 16;

std::size_t TableLength(std::uint8_t deviceCode)
{
    std::size_t columns = 0;
    for (const char position : ParseMatrixCodes(CreateRecord(deviceCode, 0).MatrixCodes))
        if (position != NoContact)
            columns = std::max(columns, static_cast<unsigned char>(position) / ColumnBytes + 1);
    return columns * ColumnBytes;
}

std::vector<ModuleKind> MainModules(std::string_view deviceCodes)
{
    std::vector<ModuleKind> kinds;
    for (const char code : deviceCodes)
        if (const ModuleKind kind = KindOf(static_cast<std::uint8_t>(code)); !IsPart(kind))
            kinds.push_back(kind);
    return kinds;
}

}  // namespace

std::vector<KeyTable> KeyTablesOf(std::string_view deviceCodes)
{
    std::vector<KeyTable> tables;
    std::size_t start = FlashLayout::TablesAt;
    std::uint8_t position = 0;
    for (const char character : deviceCodes) {
        const auto code = static_cast<std::uint8_t>(character);
        const std::size_t length = TableLength(code);
        if (KindOf(code) == ModuleKind::None || start + length > FlashLayout::TablesEnd)
            break;
        tables.push_back({KindOf(code), position, start, length});
        start += length;
        ++position;
    }
    return tables;
}

const KeyTable* FindTable(const std::vector<KeyTable>& tables, ModuleKind kind)
{
    const auto found = std::ranges::find(tables, kind, &KeyTable::kind);
    return found == tables.end() ? nullptr : &*found;
}

bool HaveSameMainModules(std::string_view deviceCodes, std::string_view otherCodes)
{
    return MainModules(deviceCodes) == MainModules(otherCodes);
}

KeyPair PairAt(const FlashImage& image, std::size_t address)
{
    return {image[address], image[address + 1]};
}

void PutPair(FlashImage& image, std::size_t address, const KeyPair& pair)
{
    image[address] = pair.first;
    image[address + 1] = pair.second;
}

char KeyTypeOf(const KeyPair& pair)
{
    if (IsErased(pair))
        return KeyType::NoKey;
    const std::array bytes{static_cast<char>(pair.first), static_cast<char>(pair.second)};
    constexpr std::string_view FirstKey("\0", 1);
    return KeyMapFromDeviceTable({bytes.data(), bytes.size()}, FirstKey, 0, 1).front();
}

}  // namespace kelvora
