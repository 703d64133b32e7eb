#include "platform/qt/QtPrompt.h"

#include <QMessageBox>

#include "platform/qt/DialogParent.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

QMessageBox::Icon IconOf(BoxIcon icon)
{
    switch (icon) {
        case BoxIcon::Exclamation:
            return QMessageBox::Warning;
        case BoxIcon::Critical:
            return QMessageBox::Critical;
        case BoxIcon::Question:
            return QMessageBox::Question;
        case BoxIcon::Information:
            break;
    }
    return QMessageBox::Information;
}

QMessageBox::StandardButtons ButtonsOf(BoxButtons buttons)
{
    switch (buttons) {
        case BoxButtons::OkCancel:
            return QMessageBox::Ok | QMessageBox::Cancel;
        case BoxButtons::YesNo:
            return QMessageBox::Yes | QMessageBox::No;
        case BoxButtons::YesNoCancel:
            return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
        case BoxButtons::Ok:
            break;
    }
    return QMessageBox::Ok;
}

QMessageBox::StandardButton ButtonOf(Answer answer)
{
    switch (answer) {
        case Answer::Cancel:
            return QMessageBox::Cancel;
        case Answer::Yes:
            return QMessageBox::Yes;
        case Answer::No:
            return QMessageBox::No;
        case Answer::Ok:
            break;
    }
    return QMessageBox::Ok;
}

// What Esc and the close box stand for.
Answer Refusal(BoxButtons buttons)
{
    switch (buttons) {
        case BoxButtons::Ok:
            return Answer::Ok;
        case BoxButtons::YesNo:
            return Answer::No;
        case BoxButtons::OkCancel:
        case BoxButtons::YesNoCancel:
            break;
    }
    return Answer::Cancel;
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
    QMessageBox box(IconOf(style.icon), ToQString(title), Body(body), ButtonsOf(style.buttons),
                    DialogParent());
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(ButtonOf(style.defaultAnswer));
    box.setEscapeButton(ButtonOf(Refusal(style.buttons)));
    switch (box.exec()) {
        case QMessageBox::Ok:
            return Answer::Ok;
        case QMessageBox::Yes:
            return Answer::Yes;
        case QMessageBox::No:
            return Answer::No;
        case QMessageBox::Cancel:
            return Answer::Cancel;
        default:
            return Refusal(style.buttons);
    }
}

}  // namespace kelvora
