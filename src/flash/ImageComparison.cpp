#include "flash/ImageComparison.h"

#include <algorithm>
#include <span>

#include "flash/DumpText.h"
#include "platform/AsciiCase.h"
#include "platform/NumberText.h"

namespace kelvora {

namespace {

constexpr std::size_t AddressDigits = 4;
constexpr std::size_t LowDigits = 2;  ///< of a dump line's address, behind the colon
constexpr std::size_t LineBytes = 16;

std::string_view Trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::optional<std::size_t> AnyHexNumber(std::string_view text)
{
    return WholeNumber<std::size_t>(text, 16);
}

std::optional<std::size_t> AddressIn(std::string_view text)
{
    if (text.size() == AddressDigits)
        return AnyHexNumber(text);
    if (text.size() != AddressDigits + 1 + LowDigits || text[AddressDigits] != ':')
        return std::nullopt;
    const auto upper = AnyHexNumber(text.substr(0, AddressDigits));
    const auto low = AnyHexNumber(text.substr(AddressDigits + 1));
    return upper && low ? std::optional(*upper * 256 + *low) : std::nullopt;
}

// The bytes of pairs of digits, parted by blanks; empty for another text.
std::string PairsIn(std::string_view text)
{
    std::string bytes;
    while (!text.empty()) {
        const std::string_view pair = text.substr(0, text.find(' '));
        const auto byte = AnyHexNumber(pair);
        if (pair.size() != 2 || !byte)
            return {};
        bytes += static_cast<char>(*byte);
        text = Trimmed(text.substr(pair.size()));
    }
    return bytes;
}

bool Matches(std::string_view image, const ImageQuery& query, std::size_t at)
{
    return std::ranges::equal(image.substr(at, query.bytes.size()), query.bytes, [&](char a, char b) {
        return a == b || (query.anyCase && AsciiUpper(a) == AsciiUpper(b));
    });
}

std::string LineAt(const FlashImage& image, std::size_t address)
{
    return FormatDump(address, std::span(image).subspan(address, LineBytes));
}

}  // namespace

std::optional<ImageQuery> ParseImageQuery(std::string_view text)
{
    const std::string_view wanted = Trimmed(text);
    if (wanted.empty())
        return std::nullopt;
    if (const auto address = AddressIn(wanted); address && *address < FlashSize)
        return ImageQuery{*address, {}};
    if (std::string bytes = PairsIn(wanted); !bytes.empty())
        return ImageQuery{{}, std::move(bytes)};
    return ImageQuery{{}, std::string(wanted), true};
}

std::optional<std::size_t> FindInImages(const ImageComparison& images, const ImageQuery& query,
                                        std::size_t from)
{
    if (query.address)
        return query.address;
    for (std::size_t i = 0; i < FlashSize; ++i) {
        const std::size_t at = (from + i) % FlashSize;
        if (Matches(TextOf(images.before), query, at) || Matches(TextOf(images.after), query, at))
            return at;
    }
    return std::nullopt;
}

std::string ComparisonText(const ImageComparison& images, const std::vector<std::string>& described)
{
    std::string text = "- " + images.beforeName + "\r\n+ " + images.afterName + "\r\n\r\n";
    for (const std::string& line : described)
        text.append(line).append("\r\n");
    text += "\r\n";
    for (std::size_t address = 0; address < FlashSize; address += LineBytes) {
        const std::string before = LineAt(images.before, address);
        if (TextOf(images.before).substr(address, LineBytes) ==
            TextOf(images.after).substr(address, LineBytes))
            text.append("  ").append(before);
        else
            text.append("- ").append(before).append("+ ").append(LineAt(images.after, address));
    }
    return text;
}

}  // namespace kelvora
