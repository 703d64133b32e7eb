#include "ports/PortSettingsText.h"

#include <algorithm>
#include <cstddef>

#include "setup/PosCfg.h"

namespace kelvora {

namespace {

constexpr std::string_view DefaultTail = ",n,8,1";

// Places from the first comma on.
constexpr std::size_t ParityPlace = 1;
constexpr std::size_t DataBitsPlace = 3;
constexpr std::size_t StopBitsPlace = 5;

// Of the options 1 to 3. What the dialog writes in small letters it does not read back: a port that it has
// set to odd or even shows none. The till's own programs take both.
constexpr std::string_view WrittenParities = "oen";
constexpr char ReadAsOdd = 'O';
constexpr char ReadAsEven = 'E';

std::size_t CommaOf(std::string_view settings)
{
    return std::min(settings.find(','), settings.size());
}

std::string WithCharacter(std::string_view settings, std::size_t place, char character)
{
    std::string text(settings);
    const std::size_t comma = CommaOf(settings);
    const std::size_t tail = text.size() - comma;
    text += DefaultTail.substr(std::min(tail, DefaultTail.size()));
    text.at(comma + place) = character;
    return text;
}

char Digit(int value)
{
    return static_cast<char>('0' + value);
}

int ParityOption(char letter)
{
    if (letter == ReadAsOdd)
        return 1;
    return letter == ReadAsEven ? 2 : 3;
}

}  // namespace

PortChoices ReadPortChoices(std::string_view settings)
{
    const std::string_view tail = settings.substr(CommaOf(settings));
    const auto at = [tail](std::size_t place) { return place < tail.size() ? tail[place] : '\0'; };
    return {BaudIndexOf(settings), ParityOption(at(ParityPlace)), at(DataBitsPlace) == '7' ? 7 : 8,
            at(StopBitsPlace) == '2' ? 2 : 1};
}

std::string WithBaud(std::string_view settings, int option)
{
    const std::string_view tail = settings.substr(CommaOf(settings));
    return std::string(BaudText(option)).append(tail.empty() ? DefaultTail : tail);
}

std::string WithParity(std::string_view settings, int option)
{
    return WithCharacter(settings, ParityPlace, WrittenParities.at(static_cast<std::size_t>(option) - 1));
}

std::string WithDataBits(std::string_view settings, int option)
{
    return WithCharacter(settings, DataBitsPlace, Digit(option));
}

std::string WithStopBits(std::string_view settings, int option)
{
    return WithCharacter(settings, StopBitsPlace, Digit(option));
}

}  // namespace kelvora
