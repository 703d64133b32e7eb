#include "comms/forms/LineMonitorWindow.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <array>
#include <utility>

#include "platform/NumberText.h"
#include "platform/qt/ReaderRoles.h"
#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"

namespace kelvora {

namespace {

/// How long changes are gathered before the table shows them.
constexpr std::chrono::milliseconds UpdateTime{50};

constexpr QSize InitialSize(960, 520);

/// Widths of the columns but the last, in characters, in their order.
constexpr std::array ColumnWidths{16, 8, 12, 14, 36, 42};

constexpr std::size_t DetailLineBytes = 16;

// The whole of a frame, sixteen bytes a line, in hexadecimal and characters.
QString DetailText(const LineEntry& entry)
{
    const std::string_view bytes = entry.bytes;
    QString text;
    for (std::size_t at = 0; at < bytes.size(); at += DetailLineBytes) {
        const std::string_view line = bytes.substr(at, DetailLineBytes);
        text += QStringLiteral("%1:  ").arg(at, 4, 10, QLatin1Char('0')) +
                ToQString(HexBytes(line)).leftJustified(3 * DetailLineBytes + 1) +
                ToQString(CharacterText(line)) + '\n';
    }
    return text;
}

}  // namespace

LineMonitorWindow::LineMonitorWindow(const UserFiles& files, const RunningOperation& running,
                                     EventLoop& eventLoop, LineMonitor& monitor)
    : files_(files),
      running_(running),
      eventLoop_(eventLoop),
      monitor_(monitor),
      model_(new LineMonitorModel(files.Words().Catalogue(), monitor, this)),
      table_(new QTableView(this)),
      empty_(new QLabel(table_)),
      detail_(new QPlainTextEdit(this)),
      pause_(NamedButton("Pause", *this)),
      clear_(NamedButton("Clear", *this)),
      save_(NamedButton("SaveAs", *this))
{
    setObjectName(QStringLiteral("LineMonitorWindow"));
    setAttribute(Qt::WA_DeleteOnClose);
    ShowAsWindow(*this);
    MakeTable();
    MakeDetail();
    Arrange();
    pause_->setCheckable(true);
    connect(pause_, &QPushButton::toggled, this, [this] { Update(); });
    connect(clear_, &QPushButton::clicked, this, [this] { Clear(); });
    connect(save_, &QPushButton::clicked, this, [this] { SaveAs(); });
    AddKeys(*this, {Qt::Key_Escape, QKeySequence::Close}, [this] { close(); });
    Retranslate();
    Update();
    monitor_.onChange = [this] { UpdateSoon(); };
}

LineMonitorWindow::~LineMonitorWindow()
{
    monitor_.onChange = nullptr;
    // It still moves while the children are destroyed, when there is no window left to tell.
    table_->verticalScrollBar()->disconnect(this);
}

void LineMonitorWindow::MakeTable()
{
    table_->setObjectName(QStringLiteral("Entries"));
    table_->setModel(model_);
    ListRows(*table_, ColumnWidths);
    // From the start: if it came with the first full page, all would be laid out anew while a line works.
    table_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    table_->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    table_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { ShowDetail(); });

    FollowEnd();

    empty_->setAlignment(Qt::AlignCenter);
    empty_->setWordWrap(true);
    auto* const over = new QHBoxLayout(table_->viewport());
    over->addWidget(empty_);
}

// Who has scrolled up reads there; who stands at the end sees what comes, whatever makes room for it.
void LineMonitorWindow::FollowEnd()
{
    QScrollBar* const bar = table_->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this,
            [this, bar](int value) { isAtEnd_ = value == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar](int, int maximum) {
        if (isAtEnd_)
            bar->setValue(maximum);
    });
}

void LineMonitorWindow::MakeDetail()
{
    detail_->setObjectName(QStringLiteral("Detail"));
    detail_->setReadOnly(true);
    detail_->setTabChangesFocus(true);
    detail_->setLineWrapMode(QPlainTextEdit::NoWrap);
    detail_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
}

void LineMonitorWindow::Arrange()
{
    auto* const across = new QHBoxLayout;
    across->addWidget(pause_);
    across->addWidget(clear_);
    across->addStretch(1);
    across->addWidget(save_);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(SplitDown(*table_, *detail_, *this), 1);
    layout->addLayout(across);
    resize(InitialSize.boundedTo(screen()->availableSize() * 9 / 10));
}

void LineMonitorWindow::ShowBusy()
{
    // The dialog for the file would hold up what works on the line.
    save_->setEnabled(model_->rowCount() > 0 && !running_.IsBusy());
}

void LineMonitorWindow::Retranslate()
{
    const auto text = [this](const MessageId& id) { return ToQString(files_.Words().Caption(id)); };
    setWindowTitle(text(Message::LineMonitorTitle));
    pause_->setText(text(Message::MonitorPause));
    clear_->setText(text(Message::MonitorClear));
    save_->setText(text(Message::MonitorSaveAs));
    empty_->setText(text(Message::MonitorEmpty));
    table_->setAccessibleName(windowTitle());
    detail_->setAccessibleName(text(Message::MonitorBytes));
    model_->Retranslate();
}

void LineMonitorWindow::UpdateSoon()
{
    if (std::exchange(updatePending_, true))
        return;
    eventLoop_.After(UpdateTime, [window = QPointer<LineMonitorWindow>(this)] {
        if (!window)
            return;
        window->updatePending_ = false;
        window->Update();
    });
}

void LineMonitorWindow::Update()
{
    if (!pause_->isChecked())
        ShowEntries();
}

void LineMonitorWindow::ShowEntries()
{
    model_->Update();
    empty_->setVisible(model_->rowCount() == 0);
    clear_->setEnabled(model_->rowCount() > 0);
    ShowBusy();
    ShowDetail();
}

void LineMonitorWindow::ShowDetail()
{
    const int row = table_->currentIndex().row();
    const QString text =
        row < 0 ? QString() : DetailText(*model_->Entries().at(static_cast<std::size_t>(row)));
    // The same text again would lose what is selected in it.
    if (text != detail_->toPlainText())
        detail_->setPlainText(text);
}

void LineMonitorWindow::Clear()
{
    monitor_.Clear();
    ShowEntries();
}

// Saves what is shown: a paused window is paused to be kept.
void LineMonitorWindow::SaveAs()
{
    const LineEntries entries = model_->Entries();
    if (!entries.empty())
        files_.SaveTextAs(Message::MonitorSaveTitle, "cdgLineMonitor",
                          [&] { return LineMonitorText(entries, ZoneOffset(entries.front()->time)); });
}

}  // namespace kelvora
