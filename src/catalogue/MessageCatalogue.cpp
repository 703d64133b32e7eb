#include "catalogue/MessageCatalogue.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "platform/NumberText.h"
#include "platform/TextLines.h"

namespace kelvora {

namespace {

// What stands before a text: three digits, comma, blank.
constexpr std::size_t KeyDigits = 3;
constexpr std::string_view KeyEnd = ", ";

std::string KeyOf(std::int16_t id)
{
    std::array<char, 16> key{};
    const int length = std::snprintf(key.data(), key.size(), "\r\n%s%03d, ", id < 0 ? "-" : "", std::abs(id));
    return {key.data(), static_cast<std::size_t>(length)};
}

}  // namespace

MessageCatalogue::MessageCatalogue() : MessageCatalogue("", "ENG") {}

MessageCatalogue::MessageCatalogue(std::string text, std::string language)
    : text_(std::move(text)), language_(std::move(language))
{
    // One pass remembers the first line of each number, so that a lookup does not read the file again.
    for (std::size_t at = text_.find(LineEnd); at != std::string::npos; at = text_.find(LineEnd, at)) {
        at += LineEnd.size();
        const std::string_view key = std::string_view(text_).substr(at, KeyDigits + KeyEnd.size());
        const auto id = WholeNumber<std::size_t>(key.substr(0, KeyDigits));
        if (!id || !key.ends_with(KeyEnd))
            continue;
        std::uint32_t& start = starts_.at(*id);
        if (start == 0)
            start = static_cast<std::uint32_t>(at + key.size());
    }
}

std::uint32_t MessageCatalogue::StartOf(std::int16_t id) const
{
    // A negative one is far beyond the end.
    const auto index = static_cast<std::size_t>(id);
    return index < starts_.size() ? starts_.at(index) : 0;
}

std::string_view MessageCatalogue::Find(std::int16_t id) const
{
    if (!Has(id))
        return {};
    const std::string_view rest = std::string_view(text_).substr(StartOf(id), MaximumMessageLength);
    const std::size_t end = rest.find(" \r\n");
    return end == std::string_view::npos ? rest : rest.substr(0, end + 1);
}

std::string MessageCatalogue::Lookup(std::int16_t id) const
{
    if (Has(id))
        return std::string(Find(id));
    const std::string key = KeyOf(id);
    if (language_ == "ITA")
        return "Codice messaggio " + key + "\r\n{non trovato nel file di localizzazione ZEL" + language_ +
               ".MES}";
    return "Message id " + key + "\r\n{not found in ZEL localization file" + language_ + ".MES}";
}

std::string MessageCatalogue::Word(const MessageId& message) const
{
    const std::string_view found = Find(static_cast<std::int16_t>(message.id));
    return std::string(found.empty() ? message.fallback : found);
}

std::string MessageCatalogue::Caption(const MessageId& message) const
{
    std::string caption = Word(message);
    caption.erase(caption.find_last_not_of(' ') + 1);
    return caption;
}

}  // namespace kelvora
