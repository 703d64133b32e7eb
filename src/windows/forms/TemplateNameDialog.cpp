#include "windows/forms/TemplateNameDialog.h"

#include <QInputDialog>

#include "layout/Templates.h"
#include "platform/Encoding.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

/// Room for the dialog's title too, in pixels.
constexpr int NameWidth = 420;

}  // namespace

std::optional<std::string> AskTemplateName(const Texts& texts, const MessageId& title,
                                           const std::string& offered, QWidget& parent)
{
    QInputDialog dialog(&parent);
    dialog.setObjectName(QStringLiteral("TemplateName"));
    dialog.setWindowTitle(ToQString(texts.Caption(title)));
    dialog.setLabelText(ToQString(texts.Caption(Message::TemplateName)));
    dialog.setTextValue(PathToQString(offered));
    dialog.resize(dialog.sizeHint().expandedTo({NameWidth, 0}));
    while (dialog.exec() == QDialog::Accepted) {
        const std::string name = PathFromQString(dialog.textValue().trimmed());
        const auto fault = FaultOf(name);
        if (!fault)
            return name;
        texts.Show(*fault == NameFault::TooLong ? Message::TemplateLongName : Message::TemplateBadName,
                   {BoxIcon::Exclamation}, TextFromPath(name));
    }
    return std::nullopt;
}

}  // namespace kelvora
