#include "platform/qt/QtFileDialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <algorithm>

#include "platform/qt/Text.h"

namespace kelvora {

namespace {

// "text (*.dat)|*.dat|..." as Qt's "text (*.dat *.DAT)" list: files from the till's world come in either
// case.
QStringList NameFilters(std::string_view filters)
{
    const QStringList parts = ToQString(filters).split('|');
    QStringList names;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString& pattern = parts[i + 1];
        const QString both = pattern.toUpper() == pattern ? pattern : pattern + ' ' + pattern.toUpper();
        names << (pattern == "*.*" ? QString(parts[i]).replace("(*.*)", "(*)")
                                   : QString(parts[i]).replace('(' + pattern + ')', '(' + both + ')'));
    }
    return names;
}

std::optional<FileDialogChoice> Ask(const FileDialogRequest& request, QFileDialog::AcceptMode mode)
{
    QFileDialog dialog(QApplication::activeWindow(), ToQString(request.title));
    dialog.setAcceptMode(mode);
    dialog.setFileMode(mode == QFileDialog::AcceptOpen ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    const QStringList filters = NameFilters(request.filters);
    dialog.setNameFilters(filters);
    dialog.selectNameFilter(
        filters.value(std::clamp<qsizetype>(request.filterIndex - 1, 0, filters.size() - 1)));
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
