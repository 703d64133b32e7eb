#include "app/ShowMessage.h"

#include <string>

namespace kelvora {

Answer ShowMessage(const MessageCatalogue& catalogue, Prompt& prompt, std::int16_t titleId,
                   std::int16_t messageId, std::string_view extra, BoxStyle style)
{
    std::string title;
    if (titleId > 0)
        title = catalogue.Lookup(titleId);
    if (title.empty())
        title = ProductName;
    std::string body;
    if (messageId > 0)
        body = catalogue.Lookup(messageId);
    if (!extra.empty())
        body.append("\r\n").append(extra);
    return prompt.Show(title, body, style);
}

}  // namespace kelvora
