#include "cli/ConsolePrompt.h"

#include <algorithm>
#include <string>

#include "platform/AsciiCase.h"
#include "platform/Encoding.h"

namespace kelvora {

Answer ConsolePrompt::Show(std::string_view /*title*/, std::string_view body, BoxStyle style)
{
    std::string text = Utf8FromText(body);
    std::erase(text, '\r');
    console_.err << DiagnosticLine(text);
    if (style.buttons == BoxButtons::Ok)
        return Answer::Ok;
    if (yes_)
        return Answer::Yes;
    console_.err << "[y/N] " << std::flush;
    std::string answer;
    std::getline(console_.in, answer);
    std::ranges::transform(answer, answer.begin(), AsciiLower);
    return answer == "y" || answer == "yes" ? Answer::Yes : style.defaultAnswer;
}

}  // namespace kelvora
