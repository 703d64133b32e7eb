#include "picture/forms/SetupsDialog.h"

#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QTabBar>
#include <algorithm>
#include <utility>

#include "picture/forms/PictureView.h"
#include "platform/qt/Announcement.h"
#include "platform/qt/ElidedLabel.h"
#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"
#include "setup/SetupTexts.h"

namespace kelvora {

namespace {

using Side = SetupComparison::Side;

constexpr QSize InitialSize(1120, 700);
constexpr std::array Sides{Side::Before, Side::After};

std::size_t IndexOf(Side side)
{
    return side == Side::Before ? 0 : 1;
}

}  // namespace

SetupsDialog::SetupsDialog(const MessageCatalogue& catalogue, NamedSetup before, NamedSetup after,
                           QWidget* parent)
    : QDialog(parent),
      catalogue_(catalogue),
      before_(std::move(before)),
      after_(std::move(after)),
      comparison_(before_.document, after_.document),
      views_(new QTabBar(this)),
      halves_{Half{new ElidedLabel(this), new PictureView(this)},
              Half{new ElidedLabel(this), new PictureView(this)}},
      hint_(new QLabel(this)),
      count_(new QLabel(this)),
      list_(new QListWidget(this)),
      previous_(NamedButton("Previous", *this)),
      next_(NamedButton("Next", *this))
{
    setObjectName(QStringLiteral("SetupsDialog"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    views_->setObjectName(QStringLiteral("Views"));
    views_->setDrawBase(false);
    hint_->setWordWrap(true);
    count_->setObjectName(QStringLiteral("Count"));
    list_->setObjectName(QStringLiteral("Differences"));
    list_->setWordWrap(true);
    connect(views_, &QTabBar::currentChanged, this, [this] { ShowPictures(); });
    connect(list_, &QListWidget::currentRowChanged, this, [this] { ShowDifference(); });
    connect(list_, &QListWidget::itemClicked, this, [this] { ShowDifference(); });
    connect(previous_, &QPushButton::clicked, this, [this] { Step(-1); });
    connect(next_, &QPushButton::clicked, this, [this] { Step(1); });
    for (const Side side : Sides) {
        const Half& half = halves_.at(IndexOf(side));
        // A long path must not widen the window: it is cut off, and whole in the tool tip.
        half.name->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        half.picture->setObjectName(side == Side::Before ? QStringLiteral("Before")
                                                         : QStringLiteral("After"));
        connect(half.picture, &PictureView::clicked, this, [this, side](int x, int y) {
            if (const auto meant = comparison_.DifferenceAt(side, View(), x, y))
                list_->setCurrentRow(static_cast<int>(*meant));
        });
    }
    MakeKeys();
    Arrange();
    Retranslate();
    list_->setCurrentRow(0);
    list_->setFocus();
}

void SetupsDialog::MakeKeys()
{
    AddKeys(*this, {Qt::Key_F3}, [this] { Step(1); });
    AddKeys(*this, {Qt::SHIFT | Qt::Key_F3}, [this] { Step(-1); });
    AddKeys(*this, {QKeySequence::Close}, [this] { close(); });
}

void SetupsDialog::Arrange()
{
    auto* const above = new QWidget(this);
    auto* const pictures = new QGridLayout(above);
    pictures->setContentsMargins(0, 0, 0, 0);
    pictures->addWidget(views_, 0, 0, 1, 2);
    for (int column = 0; column < 2; ++column) {
        const Half& half = halves_.at(static_cast<std::size_t>(column));
        pictures->addWidget(half.name, 1, column);
        pictures->addWidget(half.picture, 2, column);
        pictures->setColumnStretch(column, 1);
    }
    pictures->addWidget(hint_, 3, 0, 1, 2);
    pictures->setRowStretch(2, 1);
    auto* const below = new QWidget(this);
    auto* const belowLayout = new QVBoxLayout(below);
    belowLayout->setContentsMargins(0, 0, 0, 0);
    belowLayout->addWidget(count_);
    belowLayout->addWidget(list_, 1);
    auto* const across = new QHBoxLayout;
    across->addWidget(previous_);
    across->addWidget(next_);
    across->addStretch(1);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(SplitDown(*above, *below, *this), 1);
    layout->addLayout(across);
    resize(InitialSize.boundedTo(screen()->availableSize() * 9 / 10));
}

QString SetupsDialog::Caption(const MessageId& message) const
{
    return ToQString(catalogue_.Caption(message));
}

void SetupsDialog::ShowSetups(NamedSetup before, NamedSetup after)
{
    if (before == before_ && after == after_)
        return;
    const int row = list_->currentRow();
    before_ = std::move(before);
    after_ = std::move(after);
    comparison_ = SetupComparison(before_.document, after_.document);
    Retranslate();
    list_->setCurrentRow(std::clamp(row, 0, std::max(0, list_->count() - 1)));
    ShowPictures();
}

void SetupsDialog::Retranslate()
{
    setWindowTitle(Caption(Message::SetupsTitle));
    hint_->setText(Caption(Message::SetupsMarks));
    previous_->setText(Caption(Message::ComparisonPrevious));
    next_->setText(Caption(Message::ComparisonNext));
    ListViews();
    ListDifferences();
    ShowPictures();
}

void SetupsDialog::ListViews()
{
    const ModuleKind shown = View();
    const QSignalBlocker quiet(views_);
    while (views_->count() > 0)
        views_->removeTab(0);
    for (const ModuleKind view : comparison_.Views()) {
        const QString name = view == ModuleKind::None ? Caption(Message::BackupModules)
                                                      : ToQString(ModuleCaption(catalogue_, view));
        const int tab = views_->addTab(QString(name).replace('&', QStringLiteral("&&")));
        views_->setTabData(tab, static_cast<int>(view));
        if (view == shown)
            views_->setCurrentIndex(tab);
    }
    // A bar that is not shown yet does not tell its layout that it has grown.
    views_->updateGeometry();
}

void SetupsDialog::ListDifferences()
{
    const int row = list_->currentRow();
    const QSignalBlocker quiet(list_);
    list_->clear();
    for (const SetupDifference& difference : comparison_.Differences())
        list_->addItem(ToQString(Describe(catalogue_, difference)));
    list_->setCurrentRow(row);
    const bool differs = list_->count() > 0;
    list_->setVisible(differs);
    hint_->setVisible(differs);
    previous_->setEnabled(differs);
    next_->setEnabled(differs);
    count_->setText(differs ? ToQString(catalogue_.Word(Message::ComparisonCount)) +
                                  QString::number(list_->count())
                            : Caption(Message::SetupsEqual));
    list_->setAccessibleName(count_->text());
}

// Round and round: the last difference is before the first one.
void SetupsDialog::Step(int by)
{
    const int count = list_->count();
    if (count == 0)
        return;
    list_->setCurrentRow((list_->currentRow() + by + count) % count);
    if (!list_->hasFocus())
        Announce(*list_, list_->currentItem()->text());
}

std::optional<std::size_t> SetupsDialog::Chosen() const
{
    const int row = list_->currentRow();
    return row < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(row));
}

ModuleKind SetupsDialog::View() const
{
    return static_cast<ModuleKind>(views_->tabData(views_->currentIndex()).toInt());
}

// On the view on which it is seen.
void SetupsDialog::ShowDifference()
{
    if (const auto chosen = Chosen())
        for (int tab = 0; tab < views_->count(); ++tab)
            if (views_->tabData(tab).toInt() == static_cast<int>(comparison_.ViewOf(*chosen)))
                views_->setCurrentIndex(tab);
    ShowPictures();
}

void SetupsDialog::ShowPictures()
{
    for (const Side side : Sides)
        ShowPicture(side);
}

void SetupsDialog::ShowPicture(Side side)
{
    const Half& half = halves_.at(IndexOf(side));
    const NamedSetup& setup = side == Side::Before ? before_ : after_;
    const bool isEmpty = setup.document.Modules.empty();
    half.name->setText(setup.name);
    half.name->setToolTip(setup.name);
    half.picture->Show(comparison_.Picture(side, View(), Chosen()),
                       Caption(isEmpty ? Message::SheetEmpty : Message::SetupsNoModule));
    half.picture->setAccessibleName(setup.name);
}

}  // namespace kelvora
