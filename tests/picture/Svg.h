// What the tests of the drawings read out of their text.
#pragma once

#include <algorithm>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

namespace kelvora {

/// Whether every element is closed in its turn and every attribute's quotes are.
inline bool IsWellFormed(std::string_view svg)
{
    std::vector<std::string_view> open;
    for (auto at = svg.find('<'); at != std::string_view::npos; at = svg.find('<', at + 1)) {
        const auto end = svg.find('>', at);
        if (end == std::string_view::npos)
            return false;
        const auto tag = svg.substr(at + 1, end - at - 1);
        if (std::ranges::count(tag, '"') % 2 != 0 || tag.find_first_of("<&") != std::string_view::npos)
            return false;
        if (tag.starts_with('/')) {
            if (open.empty() || open.back() != tag.substr(1))
                return false;
            open.pop_back();
        } else if (!tag.ends_with('/')) {
            open.push_back(tag.substr(0, tag.find(' ')));
        }
    }
    return open.empty();
}

struct DrawnText {
    int x, y, size;
    std::string text;
};

/// The drawing's texts, those of the devices on a strip left out.
inline std::vector<DrawnText> TextsOf(const std::string& svg)
{
    const std::string own = std::regex_replace(svg, std::regex("<g [^]*?</g>"), "");
    const std::regex pattern("<text x=\"(\\d+)\" y=\"(\\d+)\" font-size=\"(\\d+)\"[^>]*>([^<]*)</text>");
    std::vector<DrawnText> texts;
    for (std::sregex_iterator match(own.begin(), own.end(), pattern), end; match != end; ++match)
        texts.push_back(
            {std::stoi((*match)[1]), std::stoi((*match)[2]), std::stoi((*match)[3]), (*match)[4]});
    return texts;
}

}  // namespace kelvora
