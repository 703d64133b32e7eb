#include "catalogue/Texts.h"

#include <string>
#include <utility>

#include "platform/Encoding.h"

namespace kelvora {

void Texts::Speak(MessageCatalogue catalogue)
{
    catalogue_ = std::move(catalogue);
}

Answer Texts::Show(const MessageId& message, BoxStyle style, std::string_view extra,
                   const MessageId& title) const
{
    const auto id = static_cast<std::int16_t>(message.id);
    // An older catalogue may lack the program's own additions: a question that cannot be read must not be
    // asked.
    std::string body = IsOwnMessage(message.id) && !catalogue_.Has(id) ? std::string(message.fallback)
                                                                       : catalogue_.Lookup(id);
    if (!extra.empty())
        body.append("\r\n").append(extra);
    return Tell(
        body, style,
        title.id > 0 ? catalogue_.Lookup(static_cast<std::int16_t>(title.id)) : std::string(ProductName));
}

void Texts::TellOf(const MessageId& message, const FileError& error) const
{
    Show(message, {BoxIcon::Exclamation}, TextFromPath(error.Path()) + "\r\n" + error.what());
}

Answer Texts::Tell(std::string_view text, BoxStyle style, std::string_view title) const
{
    return prompt_.Show(title, text, style);
}

}  // namespace kelvora
