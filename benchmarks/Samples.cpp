#include "Samples.h"

#include <algorithm>

#include "keymap/Keyboard.h"
#include "keymap/Models.h"
#include "setup/SetupReader.h"
#include "setup/SetupWriter.h"

namespace kelvora {

namespace {

constexpr std::string_view RowIndent = "         ";

// Changes keys all over the grid, one type after the other, as far as each place allows it.
void MixKeyTypes(ModuleRecord& record)
{
    constexpr std::string_view Types = "4321";
    int next = 0;
    for (int position = 1; position <= record.Rows * record.Columns; ++position) {
        const std::uint8_t allowed = AllowedKeyTypes(position, record.Columns, record.KeyMap);
        const char type = Types[static_cast<std::size_t>(next) % Types.size()];
        if ((allowed >> (type - KeyType::Single) & 1) != 0) {
            SetKeyType(position, type, record.Columns, record.KeyMap);
            ++next;
        }
    }
}

}  // namespace

std::string FullSetup()
{
    SetupDocument document = ReadSetup(
        "[KM096]\n[KM064]\n[MCR]\nTracks=1,2\nTrack1Sep=;\nTrack2Sep=$\nTrack3Sep=%\nAutoread=OFF\n[ICCR]\n");
    for (ModuleRecord& record : document.Modules)
        MixKeyTypes(record);
    return WriteSetup(document.Modules);
}

std::string FullSetupAsIni()
{
    std::string text = FullSetup();
    char row = 'A';
    for (std::size_t at = text.find(RowIndent); at != std::string::npos; at = text.find(RowIndent, at)) {
        text.replace(at, RowIndent.size(), std::string("Row_") + row + "  = ");
        row = row == 'Z' ? 'A' : static_cast<char>(row + 1);
    }
    return text;
}

std::size_t CountLines(std::string_view text)
{
    return static_cast<std::size_t>(std::ranges::count(text, '\n'));
}

std::size_t CountIniValues()
{
    const std::string text = FullSetupAsIni();
    return CountLines(text) - static_cast<std::size_t>(std::ranges::count(text, '['));
}

}  // namespace kelvora
