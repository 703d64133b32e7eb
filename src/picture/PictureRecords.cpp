#include "picture/PictureRecords.h"

#include <charconv>
#include <cstddef>

namespace kelvora {

std::string PictureRecord(std::span<const std::string> parts)
{
    std::string record;
    for (const std::string& part : parts)
        record += (record.empty() ? "" : " ") + std::to_string(part.size());
    record += '\n';
    for (const std::string& part : parts)
        record += part;
    return record;
}

std::optional<std::vector<std::string>> TakePictureRecord(std::string_view& rest)
{
    std::vector<std::size_t> lengths;
    std::size_t at = 0;
    for (char mark = ' '; mark == ' '; ++at) {
        std::size_t length = 0;
        const auto [end, error] = std::from_chars(rest.data() + at, rest.data() + rest.size(), length);
        at = static_cast<std::size_t>(end - rest.data());
        if (error != std::errc{} || at == rest.size() || (rest[at] != ' ' && rest[at] != '\n'))
            return std::nullopt;
        lengths.push_back(length);
        mark = rest[at];
    }
    std::vector<std::string> parts;
    for (const std::size_t length : lengths) {
        if (length > rest.size() - at)
            return std::nullopt;
        parts.emplace_back(rest.substr(at, length));
        at += length;
    }
    rest.remove_prefix(at);
    return parts;
}

}  // namespace kelvora
