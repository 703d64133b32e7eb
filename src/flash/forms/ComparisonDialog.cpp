#include "flash/forms/ComparisonDialog.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <utility>

#include "flash/TransferTexts.h"
#include "flash/forms/ImageTable.h"
#include "platform/qt/Announcement.h"
#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"

namespace kelvora {

namespace {

constexpr QSize ComparisonSize(1240, 640);

/// Longer than what a person looks for.
constexpr int LongestQuery = 64;

}  // namespace

ComparisonDialog::ComparisonDialog(const UserFiles& files, ImageComparison images, QWidget* parent)
    : QDialog(parent),
      files_(files),
      images_(std::move(images)),
      findLabel_(new QLabel(this)),
      find_(new QLineEdit(this)),
      findNext_(NamedButton("FindNext", *this)),
      found_(new QLabel(this)),
      table_(new ImageTable(images_, this)),
      count_(new QLabel(this)),
      list_(new QListWidget(this)),
      previous_(NamedButton("Previous", *this)),
      next_(NamedButton("Next", *this)),
      save_(NamedButton("SaveAs", *this))
{
    setObjectName(QStringLiteral("ComparisonDialog"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    find_->setObjectName(QStringLiteral("Find"));
    find_->setMaxLength(LongestQuery);
    find_->setClearButtonEnabled(true);
    findLabel_->setBuddy(find_);
    found_->setObjectName(QStringLiteral("Found"));
    count_->setObjectName(QStringLiteral("Count"));
    list_->setObjectName(QStringLiteral("Differences"));
    list_->setUniformItemSizes(true);
    connect(list_, &QListWidget::currentRowChanged, this, [this] { ShowDifference(); });
    connect(list_, &QListWidget::itemClicked, this, [this] { ShowDifference(); });
    connect(find_, &QLineEdit::returnPressed, this, [this] { Find(); });
    connect(find_, &QLineEdit::textChanged, found_, &QLabel::clear);
    connect(findNext_, &QPushButton::clicked, this, [this] { Find(); });
    connect(previous_, &QPushButton::clicked, this, [this] { Step(-1); });
    connect(next_, &QPushButton::clicked, this, [this] { Step(1); });
    connect(save_, &QPushButton::clicked, this, [this] { SaveAs(); });
    MakeKeys();
    Arrange();
    Retranslate();
    list_->setCurrentRow(0);
    table_->setFocus();
}

void ComparisonDialog::MakeKeys()
{
    AddKeys(*this, {Qt::Key_F3}, [this] { Step(1); });
    AddKeys(*this, {Qt::SHIFT | Qt::Key_F3}, [this] { Step(-1); });
    AddKeys(*this, {QKeySequence::Find}, [this] {
        find_->setFocus();
        find_->selectAll();
    });
    AddKeys(*this, {QKeySequence::Close}, [this] { close(); });
}

void ComparisonDialog::Arrange()
{
    auto* const above = new QHBoxLayout;
    above->addWidget(findLabel_);
    above->addWidget(find_, 2);
    above->addWidget(findNext_);
    above->addWidget(found_, 1);
    auto* const below = new QWidget(this);
    auto* const belowLayout = new QVBoxLayout(below);
    belowLayout->setContentsMargins(0, 0, 0, 0);
    belowLayout->addWidget(count_);
    belowLayout->addWidget(list_, 1);
    auto* const closing = new QDialogButtonBox(QDialogButtonBox::Close, this);
    closing->button(QDialogButtonBox::Close)->setAutoDefault(false);
    connect(closing, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const across = new QHBoxLayout;
    across->addWidget(previous_);
    across->addWidget(next_);
    across->addStretch(1);
    across->addWidget(save_);
    across->addWidget(closing);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(above);
    layout->addWidget(SplitDown(*table_, *below, *this), 1);
    layout->addLayout(across);
    resize(ComparisonSize.boundedTo(screen()->availableSize() * 9 / 10));
}

void ComparisonDialog::Retranslate()
{
    const auto text = [this](const MessageId& id) { return ToQString(files_.Words().Caption(id)); };
    setWindowTitle(text(Message::ComparisonTitle));
    findLabel_->setText(text(Message::ComparisonFind));
    find_->setPlaceholderText(text(Message::ComparisonFindHint));
    findNext_->setText(text(Message::ComparisonFindNext));
    previous_->setText(text(Message::ComparisonPrevious));
    next_->setText(text(Message::ComparisonNext));
    save_->setText(text(Message::MonitorSaveAs));
    table_->setAccessibleName(windowTitle());
    found_->clear();
    ListDifferences();
}

void ComparisonDialog::ListDifferences()
{
    const int row = list_->currentRow();
    described_ = DifferenceLines(files_.Words().Catalogue(), images_.differences);
    const QSignalBlocker quiet(list_);
    list_->clear();
    for (const std::string& line : described_)
        list_->addItem(ToQString(line));
    list_->setCurrentRow(row);
    const bool differs = !described_.empty();
    list_->setVisible(differs);
    previous_->setEnabled(differs);
    next_->setEnabled(differs);
    count_->setText(differs ? ToQString(files_.Words().Word(Message::ComparisonCount)) +
                                  QString::number(described_.size())
                            : ToQString(files_.Words().Caption(Message::ComparisonEqual)));
    list_->setAccessibleName(count_->text());
}

// Round and round: the last difference is before the first one.
void ComparisonDialog::Step(int by)
{
    // From where the user is, which a search may have changed; past the last one comes the first.
    const auto& all = images_.differences;
    if (all.empty())
        return;
    const auto isBefore = [](std::size_t place) {
        return [place](const ImageDifference& difference) { return difference.first < place; };
    };
    const std::size_t place = by > 0 ? table_->SearchStart() : table_->Place();
    const auto passed = std::ranges::partition_point(all, isBefore(place)) - all.begin();
    const auto count = static_cast<std::ptrdiff_t>(all.size());
    list_->setCurrentRow(static_cast<int>((by > 0 ? passed : passed - 1 + count) % count));
    if (!list_->hasFocus())
        Announce(*list_, list_->currentItem()->text());
    ShowDifference();
}

void ComparisonDialog::ShowDifference()
{
    const int row = list_->currentRow();
    if (row < 0)
        return;
    const ImageDifference& difference = images_.differences.at(static_cast<std::size_t>(row));
    table_->ShowBytes(difference.first, difference.last);
}

void ComparisonDialog::Find()
{
    const auto query = ParseImageQuery(FromQString(find_->text()));
    const auto place = query ? FindInImages(images_, *query, table_->SearchStart()) : std::nullopt;
    ShowNews(*found_, place ? QString() : ToQString(files_.Words().Caption(Message::ComparisonNotFound)));
    if (place)
        table_->ShowBytes(*place, *place + std::max<std::size_t>(query->bytes.size(), 1) - 1);
}

void ComparisonDialog::SaveAs()
{
    files_.SaveTextAs(Message::ComparisonSaveTitle, "cdgComparison",
                      [this] { return ComparisonText(images_, described_); });
}

}  // namespace kelvora
