#include "platform/Encoding.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace kelvora {

namespace {

// The characters of codes 0x80 to 0x9F; all other codes are the characters of the same number.
constexpr std::array<char16_t, 32> Characters80To9F{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char Byte(unsigned value)
{
    return static_cast<char>(value);
}

void AppendCharacter(std::string& utf8, unsigned character)
{
    if (character < 0x80) {
        utf8 += Byte(character);
    } else if (character < 0x800) {
        utf8 += Byte(0xC0 | character >> 6);
        utf8 += Byte(0x80 | (character & 0x3F));
    } else {
        utf8 += Byte(0xE0 | character >> 12);
        utf8 += Byte(0x80 | (character >> 6 & 0x3F));
        utf8 += Byte(0x80 | (character & 0x3F));
    }
}

// Well-formed sequences by their first byte, which the row before does not reach: how long they are (0: none
// begins so), and what the second byte may be.
struct Sequence {
    unsigned char last;
    std::size_t length;
    unsigned char secondLow = 0x80, secondHigh = 0xBF;
};
constexpr std::array Sequences{
    Sequence{0x7F, 1}, Sequence{0xC1, 0},
    Sequence{0xDF, 2}, Sequence{0xE0, 3, 0xA0},
    Sequence{0xEC, 3}, Sequence{0xED, 3, 0x80, 0x9F},
    Sequence{0xEF, 3}, Sequence{0xF0, 4, 0x90},
    Sequence{0xF3, 4}, Sequence{0xF4, 4, 0x80, 0x8F},
};

// The length of the well-formed sequence that `bytes` begin with; 0 for none.
std::size_t SequenceLength(std::string_view bytes)
{
    const auto first = static_cast<unsigned char>(bytes.front());
    const auto* const sequence =
        std::ranges::find_if(Sequences, [&](const Sequence& row) { return first <= row.last; });
    if (sequence == Sequences.end() || bytes.size() < sequence->length)
        return 0;
    for (std::size_t i = 1; i < sequence->length; ++i) {
        const auto next = static_cast<unsigned char>(bytes[i]);
        const unsigned low = i == 1 ? sequence->secondLow : 0x80;
        const unsigned high = i == 1 ? sequence->secondHigh : 0xBF;
        if (next < low || next > high)
            return 0;
    }
    return sequence->length;
}

// The character of one well-formed sequence.
char32_t Decode(std::string_view sequence)
{
    constexpr std::array<unsigned, 5> FirstByteMasks{0, 0x7F, 0x1F, 0x0F, 0x07};
    char32_t character = static_cast<unsigned char>(sequence.front()) & FirstByteMasks.at(sequence.size());
    for (const char next : sequence.substr(1))
        character = character << 6 | (static_cast<unsigned char>(next) & 0x3FU);
    return character;
}

}  // namespace

char16_t CharacterOf(unsigned char code)
{
    return code >= 0x80 && code < 0xA0 ? Characters80To9F.at(code - 0x80U) : code;
}

std::optional<char> CodeOf(char32_t character)
{
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF))
        return static_cast<char>(character);
    const auto* const found = std::ranges::find(Characters80To9F, character);
    if (found == Characters80To9F.end())
        return std::nullopt;
    return static_cast<char>(0x80 + (found - Characters80To9F.begin()));
}

std::string Utf8FromText(std::string_view text)
{
    std::string utf8;
    utf8.reserve(text.size());
    for (const char c : text)
        AppendCharacter(utf8, CharacterOf(static_cast<unsigned char>(c)));
    return utf8;
}

std::optional<std::string> TextFromUtf8(std::string_view utf8)
{
    std::string text;
    while (!utf8.empty()) {
        const std::size_t length = SequenceLength(utf8);
        const std::optional<char> code = length == 0 ? std::nullopt : CodeOf(Decode(utf8.substr(0, length)));
        if (!code)
            return std::nullopt;
        text += *code;
        utf8.remove_prefix(length);
    }
    return text;
}

bool IsUtf8(std::string_view bytes)
{
    while (!bytes.empty()) {
        const std::size_t length = SequenceLength(bytes);
        if (length == 0)
            return false;
        bytes.remove_prefix(length);
    }
    return true;
}

std::string Utf8FromPath(std::string_view path)
{
    return IsUtf8(path) ? std::string(path) : Utf8FromText(path);
}

std::string TextFromPath(std::string_view path)
{
    if (!IsUtf8(path))
        return std::string(path);
    std::string text;
    while (!path.empty()) {
        const std::size_t length = SequenceLength(path);
        text += CodeOf(Decode(path.substr(0, length))).value_or('?');
        path.remove_prefix(length);
    }
    return text;
}

}  // namespace kelvora
