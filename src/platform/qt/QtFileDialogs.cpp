#include "platform/qt/QtFileDialogs.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>

#include "platform/qt/DialogParent.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

// "text (*.dat)|*.dat|..." as Qt's list of "text (*.dat)".
QStringList NameFilters(std::string_view filters)
{
    const QStringList parts = ToQString(filters).split('|');
    QStringList names;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
        names << QString(parts[i]).replace(QStringLiteral("(*.*)"), QStringLiteral("(*)"));
    return names;
}

// The ending that a filter stands for; all files have that of the first filter.
QString EndingOf(const QString& filter, const QStringList& filters)
{
    static const QRegularExpression pattern(QStringLiteral("\\(\\*\\.(\\w+)\\)$"));
    const QString ending = pattern.match(filter).captured(1);
    return ending.isEmpty() ? pattern.match(filters.value(0)).captured(1) : ending;
}

std::optional<FileDialogChoice> Ask(const FileDialogRequest& request, QFileDialog::AcceptMode mode)
{
    QFileDialog dialog(DialogParent(), ToQString(request.title));
    dialog.setObjectName(ToQString(request.name));
    dialog.setAcceptMode(mode);
    dialog.setFileMode(mode == QFileDialog::AcceptOpen ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    const QStringList filters = NameFilters(request.filters);
    dialog.setNameFilters(filters);
    dialog.selectNameFilter(
        filters.value(std::clamp<qsizetype>(request.filterIndex - 1, 0, filters.size() - 1)));
    if (mode == QFileDialog::AcceptOpen) {
        // A name typed without its ending means the file that is listed with it.
        const auto setEnding = [&](const QString& filter) {
            dialog.setDefaultSuffix(EndingOf(filter, filters));
        };
        setEnding(dialog.selectedNameFilter());
        QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, setEnding);
    }
    if (!request.folder.empty())
        dialog.setDirectory(PathToQString(request.folder));
    if (!request.offeredName.empty())
        dialog.selectFile(PathToQString(request.offeredName));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    FileDialogChoice choice;
    const QString path = dialog.selectedFiles().constFirst();
    choice.path = PathFromQString(path);
    choice.folder = PathFromQString(QFileInfo(path).absolutePath());
    const auto index = static_cast<int>(filters.indexOf(dialog.selectedNameFilter()));
    choice.filterIndex = index < 0 ? request.filterIndex : index + 1;
    return choice;
}

}  // namespace

std::optional<FileDialogChoice> QtFileDialogs::Open(const FileDialogRequest& request)
{
    return Ask(request, QFileDialog::AcceptOpen);
}

std::optional<FileDialogChoice> QtFileDialogs::Save(const FileDialogRequest& request)
{
    return Ask(request, QFileDialog::AcceptSave);
}

}  // namespace kelvora
