#include "platform/Encoding.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace kelvora {

namespace {

// The characters of codes 0x80 to 0x9F; all other codes are the characters of the same number.
constexpr std::array<std::string_view, 32> Characters80To9F{
    "\u20AC",   "\xC2\x81", "\u201A", "\u0192", "\u201E", "\u2026",   "\u2020", "\u2021",
    "\u02C6",   "\u2030",   "\u0160", "\u2039", "\u0152", "\xC2\x8D", "\u017D", "\xC2\x8F",
    "\xC2\x90", "\u2018",   "\u2019", "\u201C", "\u201D", "\u2022",   "\u2013", "\u2014",
    "\u02DC",   "\u2122",   "\u0161", "\u203A", "\u0153", "\xC2\x9D", "\u017E", "\u0178"};

void AppendCharacter(std::string& utf8, unsigned char code)
{
    if (code < 0x80) {
        utf8 += static_cast<char>(code);
    } else if (code < 0xA0) {
        utf8 += Characters80To9F.at(code - 0x80U);
    } else {
        utf8 += static_cast<char>(0xC0 | code >> 6);
        utf8 += static_cast<char>(0x80 | (code & 0x3F));
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
    Sequence{0xFF, 0},
};

// The length of the well-formed sequence that `bytes` begin with; 0 for none.
std::size_t SequenceLength(std::string_view bytes)
{
    const auto first = static_cast<unsigned char>(bytes.front());
    const auto* const sequence =
        std::ranges::find_if(Sequences, [&](const Sequence& row) { return first <= row.last; });
    if (bytes.size() < sequence->length)
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

std::optional<char> CodeOf(char32_t character)
{
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF))
        return static_cast<char>(character);
    const auto* const found = std::ranges::find(Characters80To9F, character, Decode);
    if (found == Characters80To9F.end())
        return std::nullopt;
    return static_cast<char>(0x80 + (found - Characters80To9F.begin()));
}

std::string Utf8FromText(std::string_view text)
{
    std::string utf8;
    utf8.reserve(text.size());
    for (const char c : text)
        AppendCharacter(utf8, static_cast<unsigned char>(c));
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
