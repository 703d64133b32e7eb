#include "windows/forms/TemplateForms.h"

#include <QInputDialog>

#include "platform/Encoding.h"
#include "platform/qt/Text.h"
#include "windows/forms/TemplatesDialog.h"

namespace kelvora {

namespace {

/// Room for the dialog's title too, in pixels.
constexpr int NameWidth = 420;

}  // namespace

TemplateForms::TemplateForms(const SetupDesk& desk, SetupWindows& setups, QWidget& window)
    : desk_(desk),
      setups_(setups),
      window_(window),
      templates_(desk.files.OnDisk(), desk.templateFolder, desk.dataFolder + "/templates")
{
}

void TemplateForms::New()
{
    TemplatesDialog dialog(desk_.files, templates_, &window_);
    // One that cannot be read is told, and another can be chosen.
    while (dialog.exec() == QDialog::Accepted)
        if (const auto document = ReadOtherSetup(desk_.files, dialog.Chosen())) {
            setups_.NewFrom(*document);
            return;
        }
}

bool TemplateForms::Save(const SetupDocument& document, const std::string& name)
{
    const auto given = AskName(PathToQString(name));
    const auto path = given ? PathFor(*given) : std::nullopt;
    if (!path)
        return false;
    if (desk_.isOpenElsewhere && desk_.isOpenElsewhere(*path, {})) {
        desk_.Words().Show(Message::OpenElsewhere, {BoxIcon::Exclamation}, TextFromPath(*path));
        return false;
    }
    return desk_.files.MayWrite(*path) && SaveSetup(desk_.files, document, *path).value_or(false);
}

// Asks until the name can be a file's.
std::optional<std::string> TemplateForms::AskName(const QString& offered)
{
    QInputDialog dialog(&window_);
    dialog.setObjectName(QStringLiteral("TemplateName"));
    dialog.setWindowTitle(ToQString(desk_.Words().Caption(Message::TemplateSaveTitle)));
    dialog.setLabelText(ToQString(desk_.Words().Caption(Message::TemplateName)));
    dialog.setTextValue(offered);
    dialog.resize(dialog.sizeHint().expandedTo({NameWidth, 0}));
    while (dialog.exec() == QDialog::Accepted) {
        const std::string name = PathFromQString(dialog.textValue().trimmed());
        if (IsTemplateName(name))
            return name;
        desk_.Words().Show(Message::TemplateBadName, {BoxIcon::Exclamation}, TextFromPath(name));
    }
    return std::nullopt;
}

std::optional<std::string> TemplateForms::PathFor(const std::string& name) const
{
    try {
        return templates_.PathFor(name);
    } catch (const FileError& error) {
        desk_.Words().Show(Message::FileNotSaved, {BoxIcon::Exclamation},
                           TextFromPath(error.Path()) + "\r\n" + error.what());
    }
    return std::nullopt;
}

}  // namespace kelvora
