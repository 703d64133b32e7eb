#include "windows/forms/HelpWindow.h"

#include <QAbstractTextDocumentLayout>
#include <QAction>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QStyle>
#include <QTextBlock>
#include <QToolBar>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/qt/Announcement.h"
#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"
#include "windows/forms/Icons.h"

namespace kelvora {

namespace {

constexpr QSize InitialSize(960, 680);
constexpr int ResultsWidth = 260;
constexpr int TextMargin = 16;

}  // namespace

HelpWindow::HelpWindow(const MessageCatalogue& catalogue, const QString& folder, QWidget* parent)
    : QMainWindow(parent, Qt::Window),
      folder_(folder),
      missing_(ToQString(catalogue.Caption(Message::HelpMissing))),
      browser_(new HelpBrowser(this)),
      search_(new QLineEdit(this)),
      found_(new QWidget(this)),
      count_(new QLabel(found_)),
      results_(new QListWidget(found_))
{
    setObjectName(QStringLiteral("HelpWindow"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(ToQString(catalogue.Caption(Message::HelpTitle)));
    setWindowIcon(ProgramIcon());
    // A title bar has room above; the buttons and the search need the width.
    const QSize room = screen()->availableSize();
    resize(InitialSize.boundedTo({room.width(), room.height() * 9 / 10}));
    browser_->document()->setDocumentMargin(TextMargin);
    browser_->setOpenExternalLinks(false);
    browser_->setAccessibleName(windowTitle());
    auto* const split = new QSplitter(this);
    split->addWidget(found_);
    split->addWidget(browser_);
    split->setStretchFactor(1, 1);
    split->setSizes({ResultsWidth, InitialSize.width() - ResultsWidth});
    setCentralWidget(split);
    MakeSearch(catalogue);
    MakeBar(catalogue);
    MakeKeys();
    setTabOrder(search_, results_);
    setTabOrder(results_, browser_);
    browser_->setFocus();
}

void HelpWindow::MakeSearch(const MessageCatalogue& catalogue)
{
    search_->setObjectName(QStringLiteral("Search"));
    search_->setPlaceholderText(ToQString(catalogue.Caption(Message::HelpSearchHint)));
    search_->setAccessibleName(ToQString(catalogue.Caption(Message::HelpSearchHint)));
    search_->setClearButtonEnabled(true);
    search_->setMaximumWidth(ResultsWidth);
    count_->setObjectName(QStringLiteral("Count"));
    count_->setText(ToQString(catalogue.Caption(Message::HelpNotFound)));
    count_->setWordWrap(true);
    results_->setObjectName(QStringLiteral("Results"));
    results_->setAccessibleName(ToQString(catalogue.Caption(Message::HelpResults)));
    results_->setWordWrap(true);
    results_->setAlternatingRowColors(true);
    auto* const column = new QVBoxLayout(found_);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(count_);
    column->addWidget(results_, 1);
    found_->hide();
    connect(search_, &QLineEdit::textChanged, this, [this] { Search(); });
    connect(search_, &QLineEdit::returnPressed, this, [this] {
        results_->setCurrentRow(std::max(results_->currentRow(), 0));
        browser_->setFocus();
    });
    connect(results_, &QListWidget::currentRowChanged, this, [this](int row) { ShowResult(row); });
    connect(results_, &QListWidget::itemActivated, browser_, [this] { browser_->setFocus(); });
    connect(browser_, &QTextBrowser::sourceChanged, this, [this] { MarkWords(); });
}

void HelpWindow::MakeBar(const MessageCatalogue& catalogue)
{
    QToolBar* bar = addToolBar(windowTitle());
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    QAction* contents = bar->addAction(ThemedIcon(QStringLiteral("help")),
                                       ToQString(catalogue.Caption(Message::HelpContents)));
    QAction* back = bar->addAction(style()->standardIcon(QStyle::SP_ArrowBack),
                                   ToQString(catalogue.Caption(Message::HelpBack)));
    QAction* forward = bar->addAction(style()->standardIcon(QStyle::SP_ArrowForward),
                                      ToQString(catalogue.Caption(Message::HelpForward)));
    contents->setShortcut(Qt::ALT | Qt::Key_Home);
    back->setShortcut(QKeySequence::Back);
    forward->setShortcut(QKeySequence::Forward);
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(contents, &QAction::triggered, this, [this] { ShowPage(QStringLiteral("index.html")); });
    connect(back, &QAction::triggered, browser_, &QTextBrowser::backward);
    connect(forward, &QAction::triggered, browser_, &QTextBrowser::forward);
    connect(browser_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(browser_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    auto* const space = new QWidget(bar);
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bar->addWidget(space);
    auto* const label = new QLabel(ToQString(catalogue.Caption(Message::HelpSearch)), bar);
    label->setBuddy(search_);
    label->setContentsMargins(0, 0, TextMargin / 2, 0);
    bar->addWidget(label);
    bar->addWidget(search_);
}

void HelpWindow::MakeKeys()
{
    AddKeys(*this, {QKeySequence::Find}, [this] {
        search_->setFocus();
        search_->selectAll();
    });
    auto* const down = new QShortcut(Qt::Key_Down, search_);
    down->setContext(Qt::WidgetShortcut);
    connect(down, &QShortcut::activated, this, [this] { GoToResults(); });
    AddKeys(*this, {QKeySequence::Close}, [this] { close(); });
    AddKeys(*this, {QKeySequence(Qt::Key_Escape)}, [this] { Escape(); });
}

void HelpWindow::GoToResults()
{
    if (!results_->isVisible())
        return;
    results_->setFocus();
    results_->setCurrentRow(std::max(results_->currentRow(), 0));
}

// The search goes first, then the window.
void HelpWindow::Escape()
{
    if (search_->text().isEmpty())
        close();
    else
        search_->clear();
}

void HelpWindow::ShowPage(const QString& page)
{
    const QString path = folder_ + '/' + page.section('#', 0, 0);
    if (!QFileInfo::exists(path))
        return browser_->setPlainText(missing_ + '\n' + path);
    QUrl url = QUrl::fromLocalFile(path);
    url.setFragment(page.section('#', 1));
    browser_->setSource(url);
}

void HelpWindow::Search()
{
    if (!index_)
        index_.emplace(folder_);
    sections_ = index_->Find(search_->text());
    {
        // Showing waits until the list is whole.
        const QSignalBlocker quiet(results_);
        results_->clear();
        for (const HelpSection* const section : sections_)
            results_->addItem(section->heading == section->title
                                  ? section->title
                                  : section->heading + QStringLiteral("\n    \u203A ") + section->title);
    }
    const bool isAsked = !HelpIndex::Words(search_->text()).isEmpty();
    found_->setVisible(isAsked);
    count_->setVisible(sections_.isEmpty());
    results_->setVisible(!sections_.isEmpty());
    if (isAsked)
        Announce(*found_, sections_.isEmpty() ? count_->text()
                                              : results_->accessibleName() + QStringLiteral(": ") +
                                                    QString::number(sections_.size()));
    // The page stays while words are typed: a result is gone to with Enter, Down or a click.
    MarkWords();
}

void HelpWindow::ShowResult(int row)
{
    if (row < 0 || row >= sections_.size())
        return;
    const HelpSection& section = *sections_.at(row);
    ShowPage(section.page);
    MarkWords();
    const QTextBlock block = browser_->document()->findBlock(section.position);
    const QRectF place = browser_->document()->documentLayout()->blockBoundingRect(block);
    browser_->verticalScrollBar()->setValue(static_cast<int>(place.top()));
}

void HelpWindow::MarkWords()
{
    QList<QTextEdit::ExtraSelection> marks;
    QTextCharFormat format;
    format.setBackground(palette().highlight());
    format.setForeground(palette().highlightedText());
    const QStringList words = HelpIndex::Words(search_->text());
    for (QTextBlock block = browser_->document()->begin(); block.isValid(); block = block.next())
        for (const QString& word : words)
            for (const auto& [first, length] : HelpIndex::PlacesOf(word, block.text())) {
                QTextCursor cursor(block);
                cursor.setPosition(block.position() + first);
                cursor.setPosition(block.position() + first + length, QTextCursor::KeepAnchor);
                marks.append({cursor, format});
            }
    browser_->setExtraSelections(marks);
}

}  // namespace kelvora
