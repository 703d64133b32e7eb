#include "setup/TextConfiguration.h"

#include <algorithm>
#include <array>

#include "setup/SetupError.h"
#include "setup/SetupLines.h"

namespace kelvora {

namespace {

// A key that sets one character of a settings string.
struct CharacterKey {
    std::string_view name;
    std::size_t place;                 ///< counted from the string's first comma
    std::string_view values, written;  ///< a character each, in the same order
    char otherwise;
};

// Any size but 7 and 8 writes "1", a value that no port accepts: the till's own programs rely on it as it is.
constexpr std::array CharacterKeys{
    CharacterKey{"PARITY", 1, "012", "NOE", 'N'},
    CharacterKey{"SIZE", 3, "78", "78", '1'},
    CharacterKey{"STOP", 5, "12", "12", '1'},
};

constexpr std::array<std::string_view, 4> Bauds{"9600", "4800", "2400", "1200"};
constexpr std::array<std::string_view, 4> Ports{"COM1", "COM2", "COM3", "COM4"};

char Choose(const CharacterKey& key, std::string_view value)
{
    const std::size_t choice = value.size() == 1 ? key.values.find(value) : std::string_view::npos;
    return choice == std::string_view::npos ? key.otherwise : key.written[choice];
}

void WriteAfterComma(std::string& settings, std::size_t offset, char character)
{
    const std::size_t comma = settings.find(',');
    if (comma != std::string::npos && comma + offset < settings.size())
        settings.at(comma + offset) = character;
}

void TakeSetting(PortDefaults& defaults, const SetupLine& line)
{
    if (line.name == "PORT") {
        const auto* const port = std::ranges::find(Ports, line.value);
        defaults.port = static_cast<std::int16_t>(port == Ports.end() ? 1 : port - Ports.begin() + 1);
    } else if (line.name == "BAUD") {
        const auto* const baud = std::ranges::find(Bauds, line.value);
        defaults.settings.replace(0, defaults.settings.find(','),
                                  baud == Bauds.end() ? Bauds.front() : *baud);
    } else if (const auto* const key = std::ranges::find(CharacterKeys, line.name, &CharacterKey::name);
               key != CharacterKeys.end()) {
        WriteAfterComma(defaults.settings, key->place, Choose(*key, line.value));
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
