// Two flash images beside each other: what to look for in them, and both of them as a text that can be kept.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "flash/ImageDifferences.h"

namespace kelvora {

/// Two images, each with a name for people, and what is different between them.
struct ImageComparison {
    std::string beforeName;
    std::string afterName;
    FlashImage before{};
    FlashImage after{};
    std::vector<ImageDifference> differences{};
};

/// What a person looks for: an address, or bytes that either image has.
struct ImageQuery {
    std::optional<std::size_t> address;  ///< below FlashSize; without it `bytes`
    std::string bytes;
    bool anyCase = false;  ///< small letters and capitals of the bytes are the same

    friend bool operator==(const ImageQuery&, const ImageQuery&) = default;
};

/// What a typed text asks for: four hexadecimal digits ("01A0") or a dump line's beginning ("0001:A0") an
/// address where the image has it, pairs of digits ("4A", "12 0A") these bytes, all else its characters.
/// Nothing for a text of blanks.
std::optional<ImageQuery> ParseImageQuery(std::string_view text);

/// Where that is found first from `from` on, going on at address 0 after the last one; nothing when neither
/// image has it.
std::optional<std::size_t> FindInImages(const ImageComparison& images, const ImageQuery& query,
                                        std::size_t from);

/// The comparison as a text: the names, `described` (the differences in words, a line each), and the whole
/// dump, where a line that differs stands twice, before ("-") and after ("+"). CR LF ends a line.
std::string ComparisonText(const ImageComparison& images, const std::vector<std::string>& described);

}  // namespace kelvora
