#include "platform/qt/QtPrompt.h"

#include <QMessageBox>
#include <algorithm>
#include <array>

#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"

namespace kelvora {

namespace {

// In the order of BoxIcon.
constexpr std::array Icons{QMessageBox::Information, QMessageBox::Warning, QMessageBox::Critical,
                           QMessageBox::Question};

struct Choice {
    QMessageBox::StandardButtons buttons;
    Answer refusal;  ///< what Esc and the close box stand for
};

// In the order of BoxButtons.
constexpr std::array Choices{
    Choice{QMessageBox::Ok, Answer::Ok}, Choice{QMessageBox::Ok | QMessageBox::Cancel, Answer::Cancel},
    Choice{QMessageBox::Yes | QMessageBox::No, Answer::No},
    Choice{QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, Answer::Cancel}};

struct Button {
    Answer answer;
    QMessageBox::StandardButton button;
};

constexpr std::array Buttons{Button{Answer::Ok, QMessageBox::Ok}, Button{Answer::Cancel, QMessageBox::Cancel},
                             Button{Answer::Yes, QMessageBox::Yes}, Button{Answer::No, QMessageBox::No}};

QMessageBox::StandardButton ButtonOf(Answer answer)
{
    return std::ranges::find(Buttons, answer, &Button::answer)->button;
}

QString Body(std::string_view text)
{
    QString body = ToQString(text);
    // A line may end at a blank, but not within the mark between old and new.
    body.replace(QLatin1String("->"), QStringLiteral("-\u2060>"));
    return body.replace("\r\n", "\n").trimmed();
}

}  // namespace

Answer QtPrompt::Show(std::string_view title, std::string_view body, BoxStyle style)
{
    const Choice& choice = Choices.at(static_cast<std::size_t>(style.buttons));
    QMessageBox box(Icons.at(static_cast<std::size_t>(style.icon)), ToQString(title), Body(body),
                    choice.buttons, DialogParent());
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(ButtonOf(style.defaultAnswer));
    box.setEscapeButton(ButtonOf(choice.refusal));
    const auto* const pressed = std::ranges::find(Buttons, box.exec(), &Button::button);
    return pressed == Buttons.end() ? choice.refusal : pressed->answer;
}

}  // namespace kelvora
