#include "platform/LineAddress.h"

#include <algorithm>
#include <array>

#include "platform/AsciiCase.h"
#include "platform/NumberText.h"

namespace kelvora {

namespace {

/// The longest name that a machine can have.
constexpr std::size_t MaximumHost = 253;

struct Prefix {
    std::string_view text;
    LineProtocol protocol;
};

constexpr std::array Prefixes{
    Prefix{"tcp:", LineProtocol::Detected},
    Prefix{"rfc2217:", LineProtocol::Rfc2217},
    Prefix{"raw:", LineProtocol::Raw},
    Prefix{"bridge:", LineProtocol::Bridge},
};

constexpr std::string_view NameMarks = ".-_";
/// Of an IPv6 address, its network interface behind "%" included.
constexpr std::string_view NumberMarks = ":.%-_";

bool IsMadeOf(std::string_view text, std::string_view marks)
{
    return !text.empty() && text.size() <= MaximumHost && std::ranges::all_of(text, [&](char c) {
        const char lower = AsciiLower(c);
        return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9') ||
               marks.find(c) != std::string_view::npos;
    });
}

std::optional<std::string> ParseHost(std::string_view text)
{
    if (text.starts_with('[') && text.ends_with(']') && text.find(':') != std::string_view::npos) {
        text = text.substr(1, text.size() - 2);
        return IsMadeOf(text, NumberMarks) ? std::optional(std::string(text)) : std::nullopt;
    }
    return IsMadeOf(text, NameMarks) && text.front() != '-' ? std::optional(std::string(text)) : std::nullopt;
}

std::optional<LineAddress> ParseServer(LineProtocol protocol, std::string_view text)
{
    const std::size_t colon = text.rfind(':');
    if (colon == std::string_view::npos)
        return std::nullopt;
    const auto host = ParseHost(text.substr(0, colon));
    const std::uint16_t port = WholeNumber<std::uint16_t>(text.substr(colon + 1)).value_or(0);
    return host && port != 0 ? std::optional(LineAddress{protocol, *host, port}) : std::nullopt;
}

}  // namespace

std::optional<LineAddress> ParseLineAddress(std::string_view text)
{
    for (const Prefix& prefix : Prefixes)
        if (std::ranges::equal(text.substr(0, prefix.text.size()), prefix.text, {}, AsciiLower))
            return ParseServer(prefix.protocol, text.substr(prefix.text.size()));
    return std::nullopt;
}

bool IsBridge(std::string_view device)
{
    const auto address = ParseLineAddress(device);
    return address && address->protocol == LineProtocol::Bridge;
}

}  // namespace kelvora
