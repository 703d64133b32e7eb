// Any bytes as a language file: an error, or a language and port defaults that the program can use.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Require.h"
#include "setup/SetupError.h"
#include "setup/TextConfiguration.h"

namespace {

using namespace kelvora;

void RequireLanguage(std::string_view text)
{
    const std::string language = ReadLanguageSelection(text);
    Require(language.size() == 3, "three letters");
    Require(std::ranges::all_of(language, [](char c) { return c >= 'A' && c <= 'Z'; }), "capitals");
}

void RequireDefaults(std::string_view text)
{
    const PortDefaults defaults = ReadLanguageSettings(text, {2, "9600,n,8,1"});
    Require(defaults.port >= 1 && defaults.port <= 4, "a port from 1 to 4");
    Require(defaults.settings.size() == 10, "settings of full length");
    const std::string_view baud = std::string_view(defaults.settings).substr(0, 4);
    Require(baud == "9600" || baud == "4800" || baud == "2400" || baud == "1200", "a speed of the list");
    constexpr std::string_view Allowed[] = {",", "nNOE", ",", "781", ",", "12"};
    std::size_t at = 4;
    for (const std::string_view allowed : Allowed)
        Require(allowed.find(defaults.settings[at++]) != std::string_view::npos, "a character of its list");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const auto require : {RequireLanguage, RequireDefaults}) {
        try {
            require(text);
        } catch (const SetupError& error) {
            Require(error.Number() == SetupErrorNumber::LineRejected, "a rejected line");
        }
    }
    return 0;
}
