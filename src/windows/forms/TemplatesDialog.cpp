#include "windows/forms/TemplatesDialog.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>
#include <iterator>

#include "platform/Encoding.h"
#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"

namespace kelvora {

TemplatesDialog::TemplatesDialog(const UserFiles& files, const Templates& templates, QWidget* parent)
    : QDialog(parent),
      files_(files),
      templates_(templates),
      cards_(new SetupCards(SetupCards::Use::Choose, files.OnDisk(), files.Words().Catalogue(), this)),
      create_(NamedButton("Create", *this, ToQString(files.Words().Caption(Message::TemplateCreate)))),
      remove_(NamedButton("Remove", *this, ToQString(files.Words().Caption(Message::TemplateRemove))))
{
    setObjectName(QStringLiteral("TemplatesDialog"));
    setWindowTitle(ToQString(files_.Words().Caption(Message::TemplatesTitle)));
    create_->setDefault(true);
    connect(create_, &QPushButton::clicked, this, &QDialog::accept);
    connect(remove_, &QPushButton::clicked, this, [this] { Remove(); });
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
            words.Show(Message::FileNotOpened, {BoxIcon::Exclamation},
                       TextFromPath(error.Path()) + "\r\n" + error.what());
        }
    }
    std::vector<CardFile> cards;
    for (const Template& entry : list_)
        cards.push_back({PathToQString(entry.path), PathToQString(entry.name),
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
    remove_->setEnabled(chosen != list_.end() && chosen->isOwn);
}

void TemplatesDialog::Remove()
{
    const std::string path = Chosen();
    if (!remove_->isEnabled() ||
        files_.Words().Show(Message::TemplateAskRemove, YesNoStyle, TextFromPath(path)) != Answer::Yes)
        return;
    try {
        templates_.Remove(path);
    } catch (const FileError& error) {
        files_.Words().Show(Message::TemplateNotRemoved, {BoxIcon::Exclamation},
                            TextFromPath(path) + "\r\n" + error.what());
    }
    List();
    cards_->setFocus();
}

}  // namespace kelvora
