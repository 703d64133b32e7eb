#include "windows/forms/TemplatesDialog.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <utility>

#include "platform/Encoding.h"
#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"
#include "windows/forms/TemplateNameDialog.h"

namespace kelvora {

namespace {

/// The program's own, whose files are named after their modules, and what people call them.
constexpr std::array ProgramNames{
    std::pair{std::string_view("KM096"), Message::TemplateMaster},
    std::pair{std::string_view("KM096+KM064"), Message::TemplateKeyboards},
    std::pair{std::string_view("KM096+MCR"), Message::TemplateBadge},
    std::pair{std::string_view("KM096+ICCR"), Message::TemplateChipCard},
    std::pair{std::string_view("KM096+KM064+MCR+ICCR"), Message::TemplateAll},
};

QString NameOf(const MessageCatalogue& catalogue, const Template& entry)
{
    const auto* const known =
        std::ranges::find(ProgramNames, entry.name, [](const auto& row) { return row.first; });
    return entry.isOwn || known == ProgramNames.end() ? PathToQString(entry.name)
                                                      : ToQString(catalogue.Caption(known->second));
}

}  // namespace

TemplatesDialog::TemplatesDialog(const UserFiles& files, const Templates& templates, QWidget* parent)
    : QDialog(parent),
      files_(files),
      templates_(templates),
      cards_(new SetupCards(SetupCards::Use::Choose, files.OnDisk(), files.Words().Catalogue(), this)),
      create_(NamedButton("Create", *this, ToQString(files.Words().Caption(Message::TemplateCreate)))),
      rename_(NamedButton("Rename", *this, ToQString(files.Words().Caption(Message::TemplateRename)))),
      remove_(NamedButton("Remove", *this, ToQString(files.Words().Caption(Message::TemplateRemove))))
{
    setObjectName(QStringLiteral("TemplatesDialog"));
    setWindowTitle(ToQString(files_.Words().Caption(Message::TemplatesTitle)));
    create_->setDefault(true);
    connect(create_, &QPushButton::clicked, cards_, &SetupCards::OpenChosen);
    connect(rename_, &QPushButton::clicked, this, [this] { Rename(); });
    connect(remove_, &QPushButton::clicked, this, [this] { Remove(); });
    AddKeys(*this, {Qt::Key_F2}, [this] { Rename(); });
    connect(cards_, &SetupCards::opened, this, &QDialog::accept);
    connect(cards_, &SetupCards::chosen, this, [this] { ShowChosen(); });
    connect(cards_, &SetupCards::taken, this, [this] { Remove(); });
    Arrange();
    List();
    cards_->setFocus();
}

void TemplatesDialog::Arrange()
{
    auto* const cancel = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    cancel->button(QDialogButtonBox::Cancel)->setAutoDefault(false);
    connect(cancel, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const across = new QHBoxLayout;
    across->addWidget(rename_);
    across->addWidget(remove_);
    across->addStretch(1);
    across->addWidget(create_);
    across->addWidget(cancel);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(cards_, 1);
    layout->addLayout(across);
    resize(sizeHint().boundedTo(screen()->availableSize() * 9 / 10));
}

void TemplatesDialog::List()
{
    const Texts& words = files_.Words();
    list_.clear();
    for (const bool isOwn : {true, false}) {
        try {
            std::ranges::move(templates_.List(isOwn), std::back_inserter(list_));
        } catch (const FileError& error) {
            words.TellOf(Message::FileNotOpened, error);
        }
    }
    std::vector<CardFile> cards;
    for (const Template& entry : list_)
        cards.push_back({PathToQString(entry.path), NameOf(words.Catalogue(), entry),
                         entry.isOwn ? ToQString(words.Caption(Message::TemplateOwn)) : QString()});
    cards_->ShowFiles(cards);
    ShowChosen();
}

std::string TemplatesDialog::Chosen() const
{
    return PathFromQString(cards_->Chosen());
}

void TemplatesDialog::ShowChosen()
{
    const auto chosen = std::ranges::find(list_, Chosen(), &Template::path);
    create_->setEnabled(chosen != list_.end());
    const bool isOwn = chosen != list_.end() && chosen->isOwn;
    rename_->setEnabled(isOwn);
    remove_->setEnabled(isOwn);
}

void TemplatesDialog::Rename()
{
    const auto chosen = std::ranges::find(list_, Chosen(), &Template::path);
    if (!rename_->isEnabled())
        return;
    const auto name = AskTemplateName(files_.Words(), Message::TemplateRenameTitle, chosen->name, *this);
    cards_->setFocus();
    if (!name || *name == chosen->name || isOpen(chosen->path))
        return;
    const std::string old = chosen->path;
    const std::string path = templates_.PathFor(*name);
    // Another template's, or by another name this one's own.
    if (files_.OnDisk().Exists(path)) {
        files_.Words().Show(Message::TemplateThere, {BoxIcon::Exclamation}, TextFromPath(path));
        return;
    }
    try {
        templates_.Move(old, path);
    } catch (const FileError& error) {
        files_.Words().TellOf(Message::TemplateNotRenamed, error);
    }
    List();
    cards_->Choose(PathToQString(files_.OnDisk().Exists(old) ? old : path));
}

void TemplatesDialog::Remove()
{
    const std::string path = Chosen();
    if (!remove_->isEnabled() || isOpen(path) ||
        files_.Words().Show(Message::TemplateAskRemove, YesNoStyle, TextFromPath(path)) != Answer::Yes)
        return;
    try {
        templates_.Remove(path);
    } catch (const FileError& error) {
        files_.Words().TellOf(Message::TemplateNotRemoved, error);
    }
    List();
    cards_->setFocus();
}

}  // namespace kelvora
