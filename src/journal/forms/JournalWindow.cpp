#include "journal/forms/JournalWindow.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTableView>
#include <array>
#include <utility>

#include "journal/forms/JournalModel.h"
#include "platform/Encoding.h"
#include "platform/Files.h"
#include "platform/qt/Announcement.h"
#include "platform/qt/ReaderRoles.h"
#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"

namespace kelvora {

namespace {

constexpr QSize InitialSize(1100, 620);

/// Widths of the columns but the last, in characters, in their order.
constexpr std::array Widths{30, 8, 26, 16, 20, 26, 22, 50, 32, 12};

constexpr std::string_view DumpEnding = ".mem";

}  // namespace

JournalWindow::JournalWindow(const OperationNotes& notes, const Lines& lines, const Texts& texts)
    : notes_(notes),
      lines_(lines),
      texts_(texts),
      model_(new JournalModel(texts.Catalogue(), this)),
      proxy_(new JournalProxy(*model_, this)),
      searchLabel_(new QLabel(this)),
      search_(new QLineEdit(this)),
      failedOnly_(new QCheckBox(this)),
      table_(new QTableView(this)),
      empty_(new QLabel(table_)),
      count_(new QLabel(this)),
      detail_(new QPlainTextEdit(this)),
      open_(AddButton("OpenBackup", [this] { emit openRequested(*Selected()); })),
      compare_(AddButton("Compare", [this] { emit comparisonRequested(*Selected()); })),
      restore_(AddButton("Restore", [this] { emit restoreRequested(*Selected()); })),
      reload_(AddButton("Reload", [this] { Reload(); }))
{
    setObjectName(QStringLiteral("JournalWindow"));
    setAttribute(Qt::WA_DeleteOnClose);
    ShowAsWindow(*this);
    search_->setObjectName(QStringLiteral("Search"));
    search_->setClearButtonEnabled(true);
    searchLabel_->setBuddy(search_);
    failedOnly_->setObjectName(QStringLiteral("FailedOnly"));
    MakeTable();
    Arrange();
    connect(search_, &QLineEdit::textChanged, this,
            [this](const QString& words) { Filter([&] { proxy_->Search(words); }); });
    connect(failedOnly_, &QCheckBox::toggled, this,
            [this](bool on) { Filter([&] { proxy_->ShowFailuresOnly(on); }); });
    AddKeys(*this, {Qt::Key_Escape, QKeySequence::Close}, [this] { close(); });
    AddKeys(*this, {QKeySequence::Find}, [this] { search_->setFocus(); });
    AddKeys(*this, {QKeySequence::Refresh}, [this] { Reload(); });
    Retranslate();
    Reload();
}

QPushButton* JournalWindow::AddButton(const char* name, const std::function<void()>& click)
{
    auto* const button = NamedButton(name, *this);
    connect(button, &QPushButton::clicked, this, click);
    return button;
}

void JournalWindow::MakeTable()
{
    table_->setObjectName(QStringLiteral("Entries"));
    table_->setModel(proxy_);
    table_->setSortingEnabled(true);
    // The newest first, as they come.
    table_->horizontalHeader()->setSortIndicatorClearable(true);
    table_->sortByColumn(-1, Qt::AscendingOrder);
    ListRows(*table_, Widths);
    connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { ShowSelection(); });
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setWordWrap(true);
    auto* const over = new QHBoxLayout(table_->viewport());
    over->addWidget(empty_);
    detail_->setObjectName(QStringLiteral("Detail"));
    detail_->setReadOnly(true);
    detail_->setTabChangesFocus(true);
}

void JournalWindow::Arrange()
{
    auto* const top = new QHBoxLayout;
    top->addWidget(searchLabel_);
    top->addWidget(search_, 1);
    top->addWidget(failedOnly_);
    auto* const bottom = new QHBoxLayout;
    for (QPushButton* const button : {open_, compare_, restore_})
        bottom->addWidget(button);
    bottom->addStretch(1);
    bottom->addWidget(count_);
    bottom->addWidget(reload_);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(SplitDown(*table_, *detail_, *this), 1);
    layout->addLayout(bottom);
    resize(InitialSize.boundedTo(screen()->availableSize() * 9 / 10));
}

void JournalWindow::Reload()
{
    JournalContent content;
    problem_.clear();
    try {
        content = notes_.Journal()->Read();
    } catch (const FileError& error) {
        problem_ = TextFromPath(error.Path()) + ": " + error.what();
    }
    damaged_ = content.damaged;
    model_->ShowEntries(std::move(content.entries));
    ShowCount();
    ShowSelection();
}

// The model filters by beginning anew, of which the table would forget its columns.
void JournalWindow::Filter(const std::function<void()>& change)
{
    const QByteArray columns = table_->horizontalHeader()->saveState();
    change();
    table_->horizontalHeader()->restoreState(columns);
    ShowCount();
    ShowSelection();
}

void JournalWindow::ShowCount()
{
    const auto text = [this](const MessageId& id) { return ToQString(texts_.Caption(id)); };
    QString count = text(Message::JournalCount) + QLatin1Char(' ') + QString::number(proxy_->rowCount());
    if (damaged_ > 0)
        count += QStringLiteral("    ") + text(Message::JournalDamaged) + QLatin1Char(' ') +
                 QString::number(damaged_);
    ShowNews(*count_, count);
    empty_->setText(problem_.empty()
                        ? text(Message::JournalEmpty)
                        : text(Message::JournalUnreadable) + QLatin1Char('\n') + ToQString(problem_));
    empty_->setVisible(model_->rowCount() == 0);
}

const JournalEntry* JournalWindow::Selected() const
{
    const QModelIndex index = proxy_->mapToSource(table_->currentIndex());
    return index.isValid() ? &model_->EntryAt(index.row()) : nullptr;
}

// A copy of identities is the wizard's.
bool JournalWindow::HasDump(const JournalEntry* entry) const
{
    return entry && entry->backup.ends_with(DumpEnding);
}

void JournalWindow::ShowSelection()
{
    const QModelIndex index = proxy_->mapToSource(table_->currentIndex());
    detail_->setPlainText(index.isValid() ? model_->DetailText(index.row()) : QString());
    const bool hasDump = HasDump(Selected()) && !isBusy_;
    open_->setEnabled(hasDump);
    compare_->setEnabled(hasDump && hasSetup_);
    restore_->setEnabled(hasDump && lines_.HasLink());
}

void JournalWindow::ShowSituation(bool hasSetup, bool isBusy)
{
    hasSetup_ = hasSetup;
    isBusy_ = isBusy;
    ShowSelection();
}

void JournalWindow::Retranslate()
{
    const auto text = [this](const MessageId& id) { return ToQString(texts_.Caption(id)); };
    setWindowTitle(text(Message::JournalTitle));
    searchLabel_->setText(text(Message::JournalSearch));
    failedOnly_->setText(text(Message::JournalFailedOnly));
    open_->setText(text(Message::JournalOpen));
    compare_->setText(text(Message::JournalCompare));
    restore_->setText(text(Message::JournalRestore));
    reload_->setText(text(Message::JournalReload));
    table_->setAccessibleName(windowTitle());
    detail_->setAccessibleName(text(Message::ColumnMessage));
    model_->Retranslate();
    ShowCount();
    ShowSelection();
}

}  // namespace kelvora
