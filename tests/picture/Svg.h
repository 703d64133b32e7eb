// What the tests of the drawings read out of their text.
#pragma once

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>
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

/// How often `part` stands in it.
inline std::size_t Count(const std::string& svg, std::string_view part)
{
    std::size_t count = 0;
    for (auto at = svg.find(part); at != std::string::npos; at = svg.find(part, at + 1))
        ++count;
    return count;
}

struct DrawnText {
    int x, y, size;
    std::string text;
};

/// The drawing's texts, those of the devices on a strip left out.
inline std::vector<DrawnText> TextsOf(std::string svg)
{
    for (auto at = svg.find("<g "); at != std::string::npos; at = svg.find("<g ", at))
        svg.erase(at, svg.find("</g>", at) + 4 - at);
    std::vector<DrawnText> texts;
    for (auto at = svg.find("<text "); at != std::string::npos; at = svg.find("<text ", at + 1)) {
        DrawnText drawn{};
        if (std::sscanf(&svg[at], "<text x=\"%d\" y=\"%d\" font-size=\"%d\"", &drawn.x, &drawn.y,
                        &drawn.size) != 3)
            continue;
        const auto start = svg.find('>', at) + 1;
        drawn.text = svg.substr(start, svg.find('<', start) - start);
        texts.push_back(std::move(drawn));
    }
    return texts;
}

}  // namespace kelvora
