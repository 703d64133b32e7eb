#include "cli/LineReport.h"

#include "platform/Encoding.h"

namespace kelvora {

std::string PortName(int port)
{
    return "COM" + std::to_string(port);
}

std::string LineMessageText(const MessageId& message, std::string_view extra)
{
    std::string text(message.fallback);
    bool starts = true;
    for (const char c : extra) {
        const bool ends = c == '\r' || c == '\n';
        if (!ends && starts)
            text += ' ';
        if (!ends)
            text += c;
        starts = ends;
    }
    return Utf8FromText(text);
}

}  // namespace kelvora
