#include "cli/YesAnswer.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "platform/AsciiCase.h"
#include "platform/Blanks.h"

namespace kelvora {

namespace {

constexpr std::array<std::string_view, 2> English{"y", "yes"};
// The accent in UTF-8, small and capital, and in the terminals' older encoding.
constexpr std::array<std::string_view, 6> YesInItalian{"s", "si", "s\xC3\xAC", "s\xC3\x8C", "s\xEC", "s\xCC"};

}  // namespace

bool IsYes(std::string_view line, bool isItalian)
{
    line = line.substr(0, line.find_last_not_of("\r\n") + 1);
    const std::string word = LowerCase(Trim(line));
    return std::ranges::find(English, word) != English.end() ||
           (isItalian && std::ranges::find(YesInItalian, word) != YesInItalian.end());
}

bool HasItalianLocale()
{
    // The first one that is set decides.
    for (const char* const name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (const char* const value = std::getenv(name); value && *value != '\0')
            return std::string_view(value).starts_with("it");
    return false;
}

}  // namespace kelvora
