#include "cli/ConsolePrompt.h"

#include <string>

#include "platform/Encoding.h"

namespace kelvora {

Answer ConsolePrompt::Show(std::string_view /*title*/, std::string_view body, BoxStyle style)
{
    std::string text = Utf8FromText(body);
    std::erase(text, '\r');
    const bool isQuestion = style.buttons != BoxButtons::Ok;
    if (isQuestion && ask_)
        return ask_(text) ? Answer::Yes : style.defaultAnswer;
    console_.err << DiagnosticLine(text);
    return isQuestion ? Answer::Yes : Answer::Ok;
}

}  // namespace kelvora
