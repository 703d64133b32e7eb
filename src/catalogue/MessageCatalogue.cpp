#include "catalogue/MessageCatalogue.h"

#include <cstdio>
#include <utility>

#include "platform/TextLines.h"

namespace kelvora {

namespace {

// CR LF, three digits, comma, blank.
constexpr std::size_t KeyLength = 7;

std::string KeyOf(std::int16_t id)
{
    std::array<char, 16> key{};
    const int length =
        std::snprintf(key.data(), key.size(), "\r\n%s%03d, ", id < 0 ? "-" : "", id < 0 ? -id : id);
    return {key.data(), static_cast<std::size_t>(length)};
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

}  // namespace

MessageCatalogue::MessageCatalogue() : MessageCatalogue("", "ENG") {}

MessageCatalogue::MessageCatalogue(std::string text, std::string language)
    : text_(std::move(text)), language_(std::move(language))
{
    // One pass remembers the first line of each number, so that a lookup does not read the file again.
    for (std::size_t at = text_.find(LineEnd); at != std::string::npos; at = text_.find(LineEnd, at + 1)) {
        if (at + KeyLength > text_.size())
            break;
        const std::string_view key = std::string_view(text_).substr(at, KeyLength);
        if (!IsDigit(key[2]) || !IsDigit(key[3]) || !IsDigit(key[4]) || key[5] != ',' || key[6] != ' ')
            continue;
        const int id = (key[2] - '0') * 100 + (key[3] - '0') * 10 + (key[4] - '0');
        std::uint32_t& start = starts_.at(static_cast<std::size_t>(id));
        if (start == 0)
            start = static_cast<std::uint32_t>(at + KeyLength);
    }
}

std::uint32_t MessageCatalogue::StartOf(std::int16_t id) const
{
    const auto index = static_cast<std::size_t>(id);
    return id >= 0 && index < starts_.size() ? starts_.at(index) : 0;
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
