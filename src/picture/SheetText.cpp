#include "picture/SheetText.h"

#include <cstddef>

namespace kelvora {

namespace {

/// The width of a letter in percent of the size.
constexpr int LetterPercent = 60;

constexpr std::string_view Ellipsis = "\u2026";
constexpr std::string_view PartMark = ", ";

bool BeginsCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

// Ideographs and their like, which take the room of a square: in UTF-8 they have three bytes or more.
bool IsSquare(char firstByte)
{
    return static_cast<unsigned char>(firstByte) >= 0xE3;
}

int LettersWidth(std::string_view text)
{
    int percent = 0;
    for (const char byte : text)
        if (BeginsCharacter(byte))
            percent += IsSquare(byte) ? 100 : LetterPercent;
    return percent;
}

// Where the longest end of the text begins that is at most so wide.
std::size_t EndWithin(std::string_view text, int percent)
{
    std::size_t start = text.size();
    for (std::size_t at = text.size(); at-- > 0;) {
        if (!BeginsCharacter(text[at]))
            continue;
        if (LettersWidth(text.substr(at)) > percent)
            break;
        start = at;
    }
    return start;
}

std::size_t StartWithin(std::string_view text, int percent)
{
    std::size_t end = 0;
    for (std::size_t at = 1; at <= text.size(); ++at) {
        if (at < text.size() && !BeginsCharacter(text[at]))
            continue;
        if (LettersWidth(text.substr(0, at)) > percent)
            break;
        end = at;
    }
    return end;
}

}  // namespace

int TextWidth(std::string_view text, int size)
{
    return LettersWidth(text) * size / 100;
}

std::string Shortened(std::string_view text, int size, int width)
{
    if (TextWidth(text, size) <= width)
        return std::string(text);
    const int room = width * 100 / size - LetterPercent;
    const std::string_view end = text.substr(EndWithin(text, room * 2 / 3));
    const std::string_view start = text.substr(0, StartWithin(text, room - LettersWidth(end)));
    return std::string(start).append(Ellipsis).append(end);
}

std::vector<std::string> WrappedParts(const std::vector<std::string>& parts, int size, int width)
{
    std::vector<std::string> lines;
    for (const std::string& part : parts) {
        if (!lines.empty()) {
            const std::string longer = lines.back() + std::string(PartMark) + part;
            if (TextWidth(longer, size) <= width) {
                lines.back() = longer;
                continue;
            }
        }
        lines.push_back(Shortened(part, size, width));
    }
    return lines;
}

}  // namespace kelvora
