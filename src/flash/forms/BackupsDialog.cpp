#include "flash/forms/BackupsDialog.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "flash/FlashTexts.h"
#include "flash/TransferTexts.h"
#include "flash/forms/ComparisonDialog.h"
#include "platform/Encoding.h"
#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"
#include "setup/ModuleRecord.h"

namespace kelvora {

namespace {

constexpr QSize InitialSize(1100, 420);

/// The widest that a column but the last begins with, in characters; the whole text is in its tool tip.
constexpr int WidestColumn = 44;

enum Column { Date, Port, State, Kind, Modules, Terminal, File, BackupColumns };

}  // namespace

BackupsDialog::BackupsDialog(const UserFiles& files, const Backups& backups, BackupTarget target,
                             QWidget* parent)
    : QDialog(parent),
      files_(files),
      backups_(backups),
      target_(std::move(target)),
      list_(new QTreeWidget(this)),
      info_(TextLabel(QStringLiteral("Info"), {}, this)),
      restore_(NamedButton("Restore", *this, ToQString(files.Words().Caption(Message::BackupRestore)))),
      compare_(NamedButton("Compare", *this, ToQString(files.Words().Caption(Message::CompareImages))))
{
    setObjectName(QStringLiteral("BackupsDialog"));
    setWindowTitle(ToQString(files_.Words().Caption(Message::BackupsTitle)));
    connect(restore_, &QPushButton::clicked, this, [this] { Restore(); });
    connect(compare_, &QPushButton::clicked, this, [this] { Compare(); });
    MakeList();
    Arrange();
    Fill();
}

void BackupsDialog::MakeList()
{
    const auto text = [this](const MessageId& id) { return ToQString(files_.Words().Caption(id)); };
    list_->setObjectName(QStringLiteral("Backups"));
    list_->setAccessibleName(windowTitle());
    list_->setHeaderLabels({text(Message::BackupDate), text(Message::MonitorPort), text(Message::BackupState),
                            text(Message::BackupKind), text(Message::BackupModules),
                            text(Message::BackupTerminal), text(Message::BackupFile)});
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAllColumnsShowFocus(true);
    connect(list_, &QTreeWidget::currentItemChanged, this, [this] { ShowSelection(); });
}

void BackupsDialog::Arrange()
{
    info_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* const close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    close->button(QDialogButtonBox::Close)->setAutoDefault(false);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const across = new QHBoxLayout;
    across->addWidget(restore_);
    across->addWidget(compare_);
    across->addStretch(1);
    across->addWidget(close);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(list_, 1);
    layout->addWidget(info_);
    layout->addLayout(across);
    resize(InitialSize.boundedTo(screen()->availableSize() * 9 / 10));
}

void BackupsDialog::Fill()
{
    std::string problem;
    try {
        entries_ = backups_.List();
    } catch (const FileError& error) {
        problem = TextFromPath(error.Path()) + ": " + error.what();
    }
    for (const BackupEntry& entry : entries_) {
        auto* const row = new QTreeWidgetItem(list_);
        const QString title = entry.origin ? ToQString(BackupTitle(*entry.origin)) : QString();
        // Port and time, or the time alone.
        row->setText(Date, title.section(QStringLiteral(", "), -1));
        row->setText(Port, title.section(QStringLiteral(", "), 0, -2));
        if (entry.kind)
            row->setText(
                Kind, ToQString(files_.Words().Caption(
                          *entry.kind == DumpKind::Device ? Message::DumpOfDevice : Message::DumpOfSetup)));
        row->setText(Terminal, ToQString(entry.terminal));
        row->setText(File, PathToQString(entry.name));
        if (!entry.modules.empty())
            row->setText(Modules, ToQString(ModuleNames(files_.Words().Catalogue(), entry.modules)));
        row->setText(State, StateOf(entry));
        for (int column = 0; column < BackupColumns; ++column)
            row->setToolTip(column, column == File ? PathToQString(entry.path) : row->text(column));
    }
    for (int column = 0; column < File; ++column) {
        list_->resizeColumnToContents(column);
        const int widest = WidestColumn * list_->fontMetrics().averageCharWidth();
        list_->setColumnWidth(column, std::min(list_->columnWidth(column), widest));
    }
    folderText_ = ToQString(files_.Words().Word(Message::BackupFolder) + TextFromPath(backups_.Folder()));
    if (!problem.empty())
        folderText_ = ToQString(problem);
    else if (entries_.empty())
        folderText_.prepend(ToQString(files_.Words().Caption(Message::BackupsNone)) + '\n');
    list_->setCurrentItem(list_->topLevelItem(0));
    ShowSelection();
}

QString BackupsDialog::StateOf(const BackupEntry& entry) const
{
    if (!entry.readError.empty())
        return ToQString(entry.readError);
    if (entry.IsWhole())
        return ToQString(
            files_.Words().Caption(entry.modules.empty() ? Message::BackupNoModules : Message::BackupWhole));
    return ToQString(Describe(files_.Words().Catalogue(), *entry.damage))
        .replace(QStringLiteral("\r\n"), " ");
}

std::string BackupsDialog::Name(const BackupEntry& entry) const
{
    const std::string name = TextFromPath(entry.name);
    return entry.origin ? BackupTitle(*entry.origin) + " (" + name + ")" : name;
}

const BackupEntry* BackupsDialog::Selected() const
{
    const int row = list_->indexOfTopLevelItem(list_->currentItem());
    return row < 0 ? nullptr : &entries_.at(static_cast<std::size_t>(row));
}

void BackupsDialog::ShowSelection()
{
    const BackupEntry* const entry = Selected();
    // The columns may be too narrow for them.
    const auto told = [&] {
        return entry->IsWhole() && !entry->modules.empty()
                   ? ToQString(ModuleNames(files_.Words().Catalogue(), entry->modules))
                   : StateOf(*entry);
    };
    info_->setText(entry ? told() + '\n' + folderText_ : folderText_);
    restore_->setEnabled(entry && entry->IsWhole() && target_.canRestore);
    compare_->setEnabled(entry && entry->IsWhole() && target_.image);
    compare_->setToolTip(target_.image ? QString() : ToQString(files_.Words().Caption(Message::NoImageRead)));
}

// The file is read anew: it may have changed since it was listed.
std::optional<FlashDump> BackupsDialog::ReadSelected()
{
    const BackupEntry* const entry = Selected();
    if (!entry)
        return std::nullopt;
    try {
        return backups_.Read(entry->path);
    } catch (const DumpError& error) {
        files_.Words().Tell(TextFromPath(entry->path) + "\r\n" + Describe(files_.Words().Catalogue(), error),
                            {BoxIcon::Exclamation});
    } catch (const FileError& error) {
        files_.Words().Tell(TextFromPath(error.Path()) + "\r\n" + error.what(), {BoxIcon::Exclamation});
    }
    return std::nullopt;
}

void BackupsDialog::Restore()
{
    chosen_ = ReadSelected();
    if (!chosen_)
        return;
    chosenName_ = Name(*Selected());
    chosenPath_ = Selected()->path;
    accept();
}

void BackupsDialog::Compare()
{
    const auto dump = ReadSelected();
    if (!dump)
        return;
    ImageComparison images{Name(*Selected()), target_.name, dump->image, *target_.image};
    images.differences = DescribeDifferences(images.before, images.after, ModulesOf(images.after));
    ComparisonDialog(files_, std::move(images), this).exec();
}

}  // namespace kelvora
