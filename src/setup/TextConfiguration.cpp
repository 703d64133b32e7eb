#include "setup/TextConfiguration.h"

#include <algorithm>
#include <array>

#include "setup/SetupError.h"
#include "setup/SetupLines.h"

namespace kelvora {

namespace {

// One of a settings file's lists: the values it knows and the character that each writes.
struct CharacterChoice {
    std::string_view value;
    char written;
};

constexpr std::array ParityChoices{CharacterChoice{"0", 'N'}, CharacterChoice{"1", 'O'},
                                   CharacterChoice{"2", 'E'}};
// Any size but 7 and 8 writes "1", a value that no port accepts: the till's own programs rely on it as it is.
constexpr std::array SizeChoices{CharacterChoice{"7", '7'}, CharacterChoice{"8", '8'}};
constexpr std::array StopChoices{CharacterChoice{"1", '1'}, CharacterChoice{"2", '2'}};

// Places of the characters in a settings string, counted from its first comma.
constexpr std::size_t ParityAfterComma = 1;
constexpr std::size_t SizeAfterComma = 3;
constexpr std::size_t StopAfterComma = 5;

constexpr std::array<std::string_view, 4> Bauds{"9600", "4800", "2400", "1200"};
constexpr std::array<std::string_view, 4> Ports{"COM1", "COM2", "COM3", "COM4"};

template <std::size_t N>
char Choose(const std::array<CharacterChoice, N>& choices, std::string_view value, char otherwise)
{
    const auto* const row = std::ranges::find(choices, value, &CharacterChoice::value);
    return row == choices.end() ? otherwise : row->written;
}

void WriteAfterComma(std::string& settings, std::size_t offset, char character)
{
    const std::size_t comma = settings.find(',');
    if (comma != std::string::npos && comma + offset < settings.size())
        settings[comma + offset] = character;
}

void TakeSetting(PortDefaults& defaults, const SetupLine& line)
{
    if (line.name == "PORT") {
        const auto* const port = std::ranges::find(Ports, line.value);
        defaults.port = static_cast<std::int16_t>(port == Ports.end() ? 1 : port - Ports.begin() + 1);
    } else if (line.name == "BAUD") {
        const auto* const baud = std::ranges::find(Bauds, line.value);
        defaults.settings.replace(0, std::min(defaults.settings.find(','), defaults.settings.size()),
                                  baud == Bauds.end() ? Bauds.front() : *baud);
    } else if (line.name == "PARITY") {
        WriteAfterComma(defaults.settings, ParityAfterComma, Choose(ParityChoices, line.value, 'N'));
    } else if (line.name == "SIZE") {
        WriteAfterComma(defaults.settings, SizeAfterComma, Choose(SizeChoices, line.value, '1'));
    } else if (line.name == "STOP") {
        WriteAfterComma(defaults.settings, StopAfterComma, Choose(StopChoices, line.value, '1'));
    }
}

// Calls `take` with each keyword line of that section.
template <class Take>
void ForEachKeyword(std::string_view text, std::string_view section, Take take)
{
    SetupLines lines(text);
    bool inSection = false;
    for (SetupLine line = lines.Next(); line.type != SetupLine::Type::End; line = lines.Next()) {
        if (line.type == SetupLine::Type::Head)
            inSection = line.name == section;
        else if (inSection)
            take(line);
    }
}

bool IsLanguageCode(std::string_view code)
{
    return code.size() == 3 && std::ranges::all_of(code, [](char c) { return c >= 'A' && c <= 'Z'; });
}

}  // namespace

std::string ReadLanguageSelection(std::string_view text)
{
    std::string language = "ENG";
    ForEachKeyword(text, "CHOOSE", [&](const SetupLine& line) {
        if (line.name != "EXT")
            return;
        // The code becomes part of file names.
        if (!IsLanguageCode(line.value))
            RejectLine(line.number, Expected::LanguageCode);
        language = line.value;
    });
    return language;
}

PortDefaults ReadLanguageSettings(std::string_view text, PortDefaults present)
{
    ForEachKeyword(text, "PORT SETTING", [&](const SetupLine& line) { TakeSetting(present, line); });
    return present;
}

}  // namespace kelvora
