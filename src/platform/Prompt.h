// Message boxes: a question or a notice that the user answers with a button.
#pragma once

#include <string_view>

namespace kelvora {

enum class BoxIcon { Information, Exclamation, Critical, Question };
enum class BoxButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class Answer { Ok, Cancel, Yes, No };

/// How a box looks and which answer the Enter key gives.
struct BoxStyle {
    BoxIcon icon = BoxIcon::Information;
    BoxButtons buttons = BoxButtons::Ok;
    Answer defaultAnswer = Answer::Ok;
};

class Prompt {
public:
    virtual ~Prompt() = default;

    /// Shows a box and returns the button pressed. No window of the program closes while a box is open. Esc
    /// and the close box give Cancel where there is such a button, else No, else Ok. Texts are Windows-1252
    /// bytes, lines parted by CR LF.
    virtual Answer Show(std::string_view title, std::string_view body, BoxStyle style) = 0;
};

}  // namespace kelvora
