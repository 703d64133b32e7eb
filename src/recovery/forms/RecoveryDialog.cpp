#include "recovery/forms/RecoveryDialog.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <utility>

#include "picture/forms/SetupsDialog.h"
#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"
#include "setup/SetupTexts.h"

namespace kelvora {

namespace {

constexpr QSize InitialSize(900, 480);

/// The widest that the column of names begins with, in characters; the whole path is in its tool tip.
constexpr int WidestName = 52;

enum Column { Setup, Changed, State, OfferColumns };

/// In the order of FileSince.
constexpr std::array FileTexts{Message::RecoveryNoFile, Message::RecoveryFileSame,
                               Message::RecoveryFileChanged, Message::RecoveryFileGone,
                               Message::RecoveryFileUnreadable};

QString NameOf(const RecoveryOffer& offer)
{
    if (offer.damage != RecoveryDamage::None)
        return PathToQString(offer.id);
    return PathToQString(offer.copy.path.empty() ? offer.copy.name : offer.copy.path);
}

}  // namespace

RecoveryDialog::RecoveryDialog(const Texts& texts, std::vector<RecoveryOffer> offers, QWidget* parent)
    : QDialog(parent),
      texts_(texts),
      offers_(std::move(offers)),
      list_(new QTreeWidget(this)),
      detail_(TextLabel(QStringLiteral("Detail"), {}, this)),
      differences_(new QListWidget(this)),
      take_(AddButton("Take", Message::RecoveryTake, [this] { Finish(take); })),
      throwAway_(AddButton("ThrowAway", Message::RecoveryThrowAway, [this] { ThrowAway(); })),
      compare_(AddButton("Compare", Message::RecoveryCompare, [this] { Compare(); })),
      later_(AddButton("Later", Message::RecoveryLater, [this] { reject(); }))
{
    setObjectName(QStringLiteral("RecoveryDialog"));
    setWindowTitle(Caption(Message::RecoveryTitle));
    later_->setToolTip(Caption(Message::RecoveryLaterTip));
    take_->setDefault(true);
    MakeList();
    Arrange();
    AddKeys(*this, {QKeySequence::Delete}, [this] { ThrowAway(); });
    for (const RecoveryOffer& offer : offers_)
        AddRow(offer);
    for (int column = 0; column < OfferColumns; ++column)
        list_->resizeColumnToContents(column);
    const int widest = WidestName * list_->fontMetrics().averageCharWidth();
    list_->setColumnWidth(Setup, std::min(list_->columnWidth(Setup), widest));
    list_->setCurrentItem(list_->topLevelItem(0));
    list_->setFocus();
}

QPushButton* RecoveryDialog::AddButton(const char* name, const MessageId& caption,
                                       const std::function<void()>& click)
{
    auto* const button = NamedButton(name, *this, Caption(caption));
    connect(button, &QPushButton::clicked, this, click);
    return button;
}

void RecoveryDialog::MakeList()
{
    list_->setObjectName(QStringLiteral("Copies"));
    list_->setAccessibleName(windowTitle());
    list_->setHeaderLabels(
        {Caption(Message::RecoverySetup), Caption(Message::RecoveryChanged), Caption(Message::BackupState)});
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAllColumnsShowFocus(true);
    // The name of a file is at the end of its path.
    list_->setTextElideMode(Qt::ElideMiddle);
    connect(list_, &QTreeWidget::currentItemChanged, this, [this] { ShowSelection(); });
    detail_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    differences_->setObjectName(QStringLiteral("Differences"));
    differences_->setWordWrap(true);
}

void RecoveryDialog::Arrange()
{
    auto* const introduction = new QLabel(Caption(Message::RecoveryIntroduction), this);
    introduction->setWordWrap(true);
    auto* const across = new QHBoxLayout;
    across->addWidget(take_);
    across->addWidget(throwAway_);
    across->addWidget(compare_);
    across->addStretch(1);
    across->addWidget(later_);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(introduction);
    layout->addWidget(list_, 1);
    layout->addWidget(detail_);
    layout->addWidget(differences_, 1);
    layout->addLayout(across);
    resize(InitialSize.boundedTo(screen()->availableSize() * 9 / 10));
}

void RecoveryDialog::AddRow(const RecoveryOffer& offer)
{
    auto* const row = new QTreeWidgetItem(list_);
    row->setText(Setup, NameOf(offer));
    row->setText(Changed, ToQString(offer.copy.time));
    row->setText(State, Caption(offer.damage == RecoveryDamage::None ? RowOf(FileTexts, offer.file)
                                                                     : Message::RecoveryDamaged));
    for (int column = 0; column < OfferColumns; ++column)
        row->setToolTip(column, row->text(column));
}

void RecoveryDialog::ShowSelection()
{
    const RecoveryOffer* const offer = Selected();
    const bool isWhole = offer && offer->damage == RecoveryDamage::None;
    take_->setEnabled(isWhole);
    compare_->setEnabled(isWhole);
    throwAway_->setEnabled(offer != nullptr);
    differences_->clear();
    differences_->setVisible(isWhole);
    detail_->clear();
    if (isWhole) {
        for (const SetupDifference& difference : offer->differences)
            differences_->addItem(ToQString(Describe(texts_.Catalogue(), difference)));
        detail_->setText(ToQString(texts_.Word(Message::ComparisonCount)) +
                         QString::number(differences_->count()));
        differences_->setAccessibleName(detail_->text());
    } else if (offer) {
        const bool isRead = offer->damage == RecoveryDamage::Content;
        detail_->setText(Caption(isRead ? Message::RecoveryDamagedHint : Message::RecoveryUnreadable) + '\n' +
                         PathToQString(offer->id) + (isRead ? QString() : '\n' + ToQString(offer->error)));
    }
}

void RecoveryDialog::Finish(const std::function<bool(const RecoveryOffer&)>& act)
{
    const RecoveryOffer* const offer = Selected();
    if (!offer || !act(*offer))
        return;
    const int row = list_->indexOfTopLevelItem(list_->currentItem());
    {
        // In between the rows are not those of the offers.
        const QSignalBlocker quiet(list_);
        offers_.erase(offers_.begin() + row);
        delete list_->topLevelItem(row);
        list_->setCurrentItem(list_->topLevelItem(std::min(row, list_->topLevelItemCount() - 1)));
    }
    ShowSelection();
    if (offers_.empty())
        accept();
}

void RecoveryDialog::ThrowAway()
{
    const RecoveryOffer* const offer = Selected();
    if (offer &&
        texts_.Show(Message::RecoveryThrowQuestion, YesNoStyle, FromQString(NameOf(*offer))) == Answer::Yes)
        Finish(throwAway);
}

void RecoveryDialog::Compare()
{
    const RecoveryOffer* const offer = Selected();
    if (!offer)
        return;
    const auto named = [&](const MessageId& what, const SetupDocument& document) {
        return NamedSetup{NameOf(*offer) + QStringLiteral("  (") + Caption(what) + ')', document};
    };
    SetupsDialog(texts_.Catalogue(), named(Message::RecoveryOfFile, offer->base),
                 named(Message::RecoveryUnsaved, offer->document), this)
        .exec();
}

const RecoveryOffer* RecoveryDialog::Selected() const
{
    const int row = list_->indexOfTopLevelItem(list_->currentItem());
    return row < 0 ? nullptr : &offers_.at(static_cast<std::size_t>(row));
}

QString RecoveryDialog::Caption(const MessageId& message) const
{
    return ToQString(texts_.Caption(message));
}

}  // namespace kelvora
