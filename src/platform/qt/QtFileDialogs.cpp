#include "platform/qt/QtFileDialogs.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QLineEdit>
#include <QMimeDatabase>
#include <QPushButton>
#include <QRegularExpression>
#include <algorithm>

#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"

namespace kelvora {

namespace {

// Tells what a file is by its name alone. To look into files takes long on a slow share, and for ever where
// reading waits for something to be read, as with some of the system's own.
class KindsByEnding final : public QFileIconProvider {
public:
    using QFileIconProvider::icon;

    QIcon icon(const QFileInfo& info) const override
    {
        return info.isDir() ? QFileIconProvider::icon(info) : QFileIconProvider::icon(File);
    }

    QString type(const QFileInfo& info) const override
    {
        if (info.isDir())
            return QFileIconProvider::type(info);
        const QMimeType type =
            QMimeDatabase().mimeTypeForFile(info.fileName(), QMimeDatabase::MatchExtension);
        return type.isDefault() ? info.suffix().toUpper() : type.comment();
    }
};

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

class Dialog final : public QFileDialog {
public:
    // `kinds` outlives the dialog, which asks it from a thread of its own.
    Dialog(const QString& title, const QString& folder, const QStringList& filters, KindsByEnding& kinds)
        : QFileDialog(DialogParent(), title, folder), filters_(filters)
    {
        setIconProvider(&kinds);
        setOption(QFileDialog::DontConfirmOverwrite);
        setNameFilters(filters);
        if (QLineEdit* const name = NameField())
            connect(name, &QLineEdit::textChanged, this, [this] { AllowMissingEnding(); });
    }

    void accept() override
    {
        if (const QString ending = MissingEnding(); !ending.isEmpty())
            NameField()->setText(NameField()->text() + ending);
        QFileDialog::accept();
    }

private:
    QLineEdit* NameField() const { return findChild<QLineEdit*>(QStringLiteral("fileNameEdit")); }

    // A name typed without its ending means the file that is listed with it, dots in the name or not.
    QString MissingEnding() const
    {
        const QString typed = selectedFiles().value(0);
        const QString ending = "." + EndingOf(selectedNameFilter(), filters_);
        const bool misses = acceptMode() == AcceptOpen && NameField() && !QFileInfo::exists(typed) &&
                            QFileInfo::exists(typed + ending);
        return misses ? ending : QString();
    }

    // The dialog itself takes such a name for one that is not there.
    void AllowMissingEnding()
    {
        const auto* const buttons = findChild<QDialogButtonBox*>();
        if (QPushButton* const ok = buttons ? buttons->button(QDialogButtonBox::Open) : nullptr)
            ok->setEnabled(ok->isEnabled() || !MissingEnding().isEmpty());
    }

    QStringList filters_;
};

std::optional<FileDialogChoice> Ask(const FileDialogRequest& request, QFileDialog::AcceptMode mode)
{
    const QStringList filters = NameFilters(request.filters);
    const QString folder = PathToQString(request.folder);
    KindsByEnding kinds;
    Dialog dialog(ToQString(request.title), QFileInfo(folder).isDir() ? folder : QString(), filters, kinds);
    dialog.setObjectName(ToQString(request.name));
    dialog.setAcceptMode(mode);
    dialog.setFileMode(mode == QFileDialog::AcceptOpen ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog.selectNameFilter(
        filters.value(std::clamp<qsizetype>(request.filterIndex - 1, 0, filters.size() - 1)));
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
