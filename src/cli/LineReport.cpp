#include "cli/LineReport.h"

#include "app/LineErrorText.h"
#include "platform/Encoding.h"

namespace kelvora {

std::string PortName(int port)
{
    return "COM" + std::to_string(port);
}

std::string OneLineText(std::string_view text)
{
    constexpr std::string_view Marks = ".:;,!?";
    std::string line;
    bool parts = false;
    for (const char c : text) {
        const bool ends = c == '\r' || c == '\n';
        if (!ends && parts)
            line += Marks.find(line.back()) == std::string_view::npos ? "; " : " ";
        if (!ends)
            line += c;
        parts = ends && !line.empty();
    }
    return Utf8FromText(line);
}

std::string LineMessageText(const MessageId& message, std::string_view extra)
{
    return OneLineText(std::string(message.fallback).append("\n").append(extra));
}

std::string LineFailureText(const LineTarget& target, const LineResult& result)
{
    if (result.outcome == LineOutcome::Stopped)
        return "stopped";
    const LineErrorText error = DescribeLineFailure(MessageCatalogue(), target, result);
    return LineMessageText(error.message, error.extra);
}

}  // namespace kelvora
