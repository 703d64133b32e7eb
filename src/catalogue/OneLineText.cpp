#include "catalogue/OneLineText.h"

#include <algorithm>

#include "platform/Encoding.h"

namespace kelvora {

namespace {

std::string Parted(std::string line)
{
    constexpr std::string_view Marks = ".:;,!?";
    line.erase(line.find_last_not_of(' ') + 1);
    const bool isMarked = line.empty() || Marks.find(line.back()) != std::string_view::npos;
    return line + (isMarked ? " " : "; ");
}

}  // namespace

std::string OneLineText(std::string_view text)
{
    std::string line;
    bool parts = false;
    for (const char c : text) {
        const bool ends = c == '\r' || c == '\n';
        if (!ends && parts)
            line = Parted(std::move(line));
        if (!ends)
            line += c;
        parts = ends && !line.empty();
    }
    return Utf8FromText(line);
}

std::string WithoutControls(std::string line, char instead)
{
    std::ranges::replace_if(
        line, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }, instead);
    return line;
}

}  // namespace kelvora
