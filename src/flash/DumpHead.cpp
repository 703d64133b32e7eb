#include "flash/DumpHead.h"

#include <algorithm>
#include <array>

#include "platform/NumberText.h"

namespace kelvora {

namespace {

constexpr char Escape = '%';
constexpr std::size_t EscapeLength = 3;
constexpr std::size_t CrcDigits = 8;

// Each in the order of its enum.
constexpr std::array<std::string_view, 6> Names{
    "'DeviceMap:", "'MapCRC:", "'Kind:", "'Terminal:", "'Setup:", "'CRC:"};
constexpr std::array<std::string_view, 2> KindTexts{"device", "setup"};
static_assert(Names.size() == static_cast<std::size_t>(HeadLine::Name::Last) + 1);
static_assert(KindTexts.size() == static_cast<std::size_t>(DumpKind::Last) + 1);

bool IsPlain(char c)
{
    return c >= ' ' && c <= '~' && c != Escape;
}

}  // namespace

std::optional<HeadLine> ParseHeadLine(std::string_view line)
{
    const auto* const name =
        std::ranges::find_if(Names, [&](std::string_view each) { return line.starts_with(each); });
    if (name == Names.end())
        return std::nullopt;
    line.remove_prefix(name->size());
    // An editor may have taken the blank of a line that tells nothing.
    if (line.starts_with(' '))
        line.remove_prefix(1);
    else if (!line.empty())
        return std::nullopt;
    return HeadLine{static_cast<HeadLine::Name>(name - Names.begin()), line};
}

std::string FormatHeadLine(HeadLine::Name name, std::string_view value)
{
    return std::string(Names.at(static_cast<std::size_t>(name))).append(1, ' ').append(value);
}

std::string HeadText(std::string_view bytes)
{
    const std::size_t blanksAt = bytes.find_last_not_of(' ') + 1;
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (IsPlain(bytes[i]) && i < blanksAt)
            text += bytes[i];
        else
            text.append(1, Escape).append(HexText(static_cast<std::uint8_t>(bytes[i]), 2));
    }
    return text;
}

std::string BytesOfHeadText(std::string_view text)
{
    text = text.substr(0, text.find_last_not_of(' ') + 1);
    std::string bytes;
    while (!text.empty()) {
        const bool isEscaped = text.front() == Escape && text.size() >= EscapeLength;
        const auto code =
            isEscaped ? WholeNumber<std::uint8_t>(text.substr(1, EscapeLength - 1), 16) : std::nullopt;
        bytes += code ? static_cast<char>(*code) : text.front();
        text.remove_prefix(code ? EscapeLength : 1);
    }
    return bytes;
}

std::string_view KindText(DumpKind kind)
{
    return KindTexts.at(static_cast<std::size_t>(kind));
}

std::optional<DumpKind> KindOfText(std::string_view text)
{
    const auto* const found = std::ranges::find(KindTexts, text);
    if (found == KindTexts.end())
        return std::nullopt;
    return static_cast<DumpKind>(found - KindTexts.begin());
}

std::optional<std::uint32_t> ParseCrc(std::string_view text)
{
    return text.size() == CrcDigits ? WholeNumber<std::uint32_t>(text, 16) : std::nullopt;
}

}  // namespace kelvora
