#include "windows/forms/TemplateForms.h"

#include "platform/Encoding.h"
#include "windows/forms/TemplateNameDialog.h"
#include "windows/forms/TemplatesDialog.h"

namespace kelvora {

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
    dialog.isOpen = [this](const std::string& path) { return IsOpen(path); };
    // One that cannot be read is told, and another can be chosen.
    while (dialog.exec() == QDialog::Accepted)
        if (const auto document = ReadOtherSetup(desk_.files, dialog.Chosen())) {
            setups_.NewFrom(*document);
            return;
        }
}

bool TemplateForms::Save(const SetupDocument& document, const std::string& name)
{
    const auto given = AskTemplateName(desk_.Words(), Message::TemplateSaveTitle, name, window_);
    if (!given)
        return false;
    const std::string path = templates_.PathFor(*given);
    if (IsOpen(path) || !desk_.files.MayWrite(path))
        return false;
    try {
        templates_.MakeFolder();
    } catch (const FileError& error) {
        desk_.Words().TellOf(Message::FileNotSaved, error);
        return false;
    }
    return SaveSetup(desk_.files, document, path).value_or(false);
}

bool TemplateForms::IsOpen(const std::string& path) const
{
    if (!desk_.isOpenElsewhere || !desk_.isOpenElsewhere(path, {}))
        return false;
    desk_.Words().Show(Message::OpenElsewhere, {BoxIcon::Exclamation}, TextFromPath(path));
    return true;
}

}  // namespace kelvora
