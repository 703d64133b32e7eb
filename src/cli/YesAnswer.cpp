#include "cli/YesAnswer.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "platform/AsciiCase.h"
#include "platform/Blanks.h"

namespace kelvora {

namespace {

struct YesWord {
    std::string_view locale;  ///< how the locales begin in which it is one
    std::string_view word;
};

// The accents in UTF-8, small and capital, and in the terminals' older encoding.
constexpr auto YesWords = std::to_array<YesWord>({{"", "y"},
                                                  {"", "yes"},
                                                  {"it", "s"},
                                                  {"it", "si"},
                                                  {"it", "s\xC3\xAC"},
                                                  {"it", "s\xC3\x8C"},
                                                  {"it", "s\xEC"},
                                                  {"it", "s\xCC"},
                                                  {"de", "j"},
                                                  {"de", "ja"}});

}  // namespace

bool IsYes(std::string_view line, std::string_view locale)
{
    line = line.substr(0, line.find_last_not_of("\r\n") + 1);
    const std::string typed = LowerCase(Trim(line));
    return std::ranges::any_of(
        YesWords, [&](const YesWord& yes) { return locale.starts_with(yes.locale) && typed == yes.word; });
}

std::string_view PersonsLocale()
{
    // The first one that is set decides.
    for (const char* const name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (const char* const value = std::getenv(name); value && *value != '\0')
            return value;
    return {};
}

}  // namespace kelvora
