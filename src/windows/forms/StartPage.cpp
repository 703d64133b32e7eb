#include "windows/forms/StartPage.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "platform/qt/Text.h"

namespace kelvora {

namespace {

// In pixels.
constexpr int PageMargin = 16;
constexpr int ColumnSpacing = 32;
constexpr int IconSide = 24;
constexpr int ButtonHeight = 40;

constexpr int CardIndent = 5;

constexpr double HeadingSize = 1.25;

}  // namespace

StartPage::StartPage(const Commands& commands, const Files& files, const MessageCatalogue& catalogue,
                     QWidget* parent)
    : QScrollArea(parent),
      catalogue_(catalogue),
      cards_(new SetupCards(SetupCards::Use::Open, files, catalogue))
{
    setObjectName(QStringLiteral("StartPage"));
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    auto* const page = new QWidget;
    auto* const columns = new QHBoxLayout(page);
    columns->setContentsMargins(PageMargin, PageMargin, PageMargin, PageMargin);
    columns->setSpacing(ColumnSpacing);
    columns->addWidget(MakeCommands(commands));
    columns->addWidget(MakeRecent(), 1);
    setWidget(page);
    SizeHeadings();
    cards_->installEventFilter(this);
    connect(cards_, &SetupCards::opened, this, &StartPage::opened);
    connect(cards_, &SetupCards::taken, this, &StartPage::taken);
    Retranslate();
}

QLabel* StartPage::AddHeading(QWidget& column, const char* name)
{
    auto* const heading = new QLabel(&column);
    heading->setObjectName(QLatin1String(name));
    column.layout()->addWidget(heading);
    return heading;
}

void StartPage::SizeHeadings()
{
    QFont larger = font();
    larger.setPointSizeF(larger.pointSizeF() * HeadingSize);
    for (QLabel* const heading : {begin_, lately_})
        heading->setFont(larger);
}

QWidget* StartPage::MakeCommands(const Commands& commands)
{
    auto* const column = new QWidget;
    auto* const layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    begin_ = AddHeading(*column, "Begin");
    for (const Command command :
         {Command::FileMenuNew, Command::FileMenuNewFromTemplate, Command::FileMenuOpen,
          Command::FileMenuScan, Command::CommunicationsMenuPractice, Command::ToolsMenuSeries}) {
        QAction& action = commands[command];
        auto* const button = new QToolButton(column);
        button->setObjectName(QStringLiteral("Start") + action.objectName());
        button->setDefaultAction(&action);
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        button->setIconSize({IconSide, IconSide});
        button->setMinimumHeight(ButtonHeight);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        button->setFocusPolicy(Qt::StrongFocus);
        button->installEventFilter(this);
        layout->addWidget(button);
        buttons_.push_back(button);
    }
    layout->addSpacing(PageMargin / 2);
    drop_ = new DropPlace(column);
    layout->addWidget(drop_);
    layout->addStretch(1);
    return column;
}

QWidget* StartPage::MakeRecent()
{
    auto* const column = new QWidget;
    auto* const layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    lately_ = AddHeading(*column, "Lately");
    // The cards have some space around them.
    lately_->setIndent(CardIndent);
    none_ = new QLabel(column);
    none_->setObjectName(QStringLiteral("NoRecent"));
    none_->setWordWrap(true);
    none_->setIndent(CardIndent);
    none_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    layout->addWidget(none_, 1);
    layout->addWidget(cards_, 1);
    return column;
}

void StartPage::ListRecentFiles()
{
    std::vector<CardFile> files;
    for (const QString& path : recentFiles()) {
        const QFileInfo info(path);
        files.push_back({path, info.fileName(), info.path()});
    }
    cards_->setVisible(!files.empty());
    none_->setVisible(files.empty());
    cards_->ShowFiles(files);
}

void StartPage::Retranslate()
{
    const auto text = [this](const MessageId& id) { return ToQString(catalogue_.Caption(id)); };
    setAccessibleName(text(Message::StartBegin));
    begin_->setText(text(Message::StartBegin));
    drop_->setText(text(Message::EmptyMain));
    lately_->setText(text(Message::StartRecent));
    none_->setText(text(Message::StartNone));
    cards_->Retranslate();
    if (isVisible())
        ListRecentFiles();
}

void StartPage::changeEvent(QEvent* event)
{
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange && lately_)
        SizeHeadings();
}

// A focus proxy would hold Tab in the cards.
void StartPage::focusInEvent(QFocusEvent* event)
{
    // The keys go to what is opened most.
    QWidget* const first = none_->isHidden() ? static_cast<QWidget*>(cards_) : buttons_.front();
    first->setFocus(event->reason());
}

// From the cards at the left the arrow leads to the buttons. These are gone through by the arrows too, and
// pressed by Enter as by the space bar.
bool StartPage::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QScrollArea::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (watched == cards_ && key == Qt::Key_Left && cards_->IsAtLeft())
        buttons_.front()->setFocus();
    auto* const button = dynamic_cast<QToolButton*>(watched);
    if (!button)
        return QScrollArea::eventFilter(watched, event);
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        button->click();
        return true;
    }
    if (key == Qt::Key_Right && cards_->isVisible()) {
        cards_->setFocus();
        return true;
    }
    return QScrollArea::eventFilter(watched, event);
}

}  // namespace kelvora
