// Any bytes as a message file: each lookup gives what a plain search through the text gives.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <set>
#include <string>
#include <string_view>

#include "Require.h"
#include "catalogue/MessageCatalogue.h"

namespace {

using namespace kelvora;

constexpr std::string_view Digits = "0123456789";

std::string SearchedFor(const std::string& text, int id)
{
    char key[8];
    std::snprintf(key, sizeof key, "\r\n%03d, ", id);
    const std::size_t at = text.find(key);
    if (at == std::string::npos)
        return std::string("Message id ") + key + "\r\n{not found in ZEL localization fileENG.MES}";
    const std::string rest = text.substr(at + 7, 128);
    const std::size_t end = rest.find(" \r\n");
    return end == std::string::npos ? rest : rest.substr(0, end + 1);
}

// The numbers worth a look: those at the starts of lines, and a few that may be anywhere or nowhere.
std::set<int> Numbers(std::string_view text)
{
    std::set<int> numbers{0, 5, 590, 999};
    for (std::size_t at = text.find('\n'); at != std::string_view::npos && numbers.size() < 40;
         at = text.find('\n', at + 1)) {
        const std::string_view number = text.substr(at + 1, 3);
        if (number.size() == 3 && number.find_first_not_of(Digits) == std::string_view::npos)
            numbers.insert(std::stoi(std::string(number)));
    }
    return numbers;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    const MessageCatalogue catalogue(text, "ENG");
    for (const int id : Numbers(text)) {
        const std::string found = catalogue.Lookup(static_cast<std::int16_t>(id));
        Require(found == SearchedFor(text, id), "the first line of that number");
        const std::string caption = catalogue.Caption({id, "fallback"});
        Require(caption.empty() || caption.back() != ' ', "captions have no closing blank");
    }
    return 0;
}
