#include "picture/forms/SetupCards.h"

#include <QContextMenuEvent>
#include <QDateTime>
#include <QKeyEvent>
#include <QMenu>
#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

#include "picture/forms/CardDelegate.h"
#include "picture/forms/SvgPicture.h"
#include "platform/qt/Background.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

/// How long one file is waited for before the next one is looked at too.
constexpr std::chrono::milliseconds Patience{200};

// As every date of the program is written.
QString TimeText(std::chrono::system_clock::time_point time)
{
    return QDateTime::fromSecsSinceEpoch(std::chrono::system_clock::to_time_t(time))
        .toString(QStringLiteral("yyyy-MM-dd HH:mm"));
}

CardDelegate& DelegateOf(const QListView& view)
{
    return *static_cast<CardDelegate*>(view.itemDelegate());
}

}  // namespace

// What a thread may still hold when Qt has gone: nothing of Qt's.
struct SetupCards::Reading {
    SetupCard card;
    std::optional<std::chrono::system_clock::time_point> saved;

    Reading(const Files& files, const std::string& path) : card(ReadSetupCard(files, path))
    {
        std::error_code isNotKnown;
        const auto time = std::filesystem::last_write_time(path, isNotKnown);
        if (!isNotKnown)
            saved = std::chrono::file_clock::to_sys(time);
    }
    explicit Reading(const std::system_error& error) : card{SetupCard::State::NotRead, error.what()} {}
};

SetupCards::SetupCards(Use use, const Files& files, const MessageCatalogue& catalogue, QWidget* parent)
    : QListView(parent), use_(use), files_(files), catalogue_(catalogue)
{
    setObjectName(QStringLiteral("SetupCards"));
    auto* const delegate = new CardDelegate(this);
    delegate->hasTakeSign = use == Use::Open;
    delegate->lines = use == Use::Open ? 3 : 2;
    setItemDelegate(delegate);
    setModel(&model_);
    setViewMode(IconMode);
    setMovement(Static);
    setResizeMode(Adjust);
    setUniformItemSizes(true);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(NoFrame);
    setMouseTracking(true);
    viewport()->setAutoFillBackground(false);
    reader_.setSingleShot(true);
    connect(&reader_, &QTimer::timeout, this, &SetupCards::ReadNext);
    if (use == Use::Open)
        connect(this, &QListView::clicked, this, &SetupCards::Open);
    else
        connect(this, &QListView::doubleClicked, this, &SetupCards::Open);
    Retranslate();
}

void SetupCards::ShowFiles(const std::vector<CardFile>& files)
{
    reader_.stop();
    model_.clear();
    wanted_.clear();
    read_ = 0;
    for (const CardFile& file : files) {
        auto* const card = new QStandardItem(file.name);
        card->setData(file.path, CardPath);
        card->setData(QStringList(file.origin), CardLines);
        card->setData(file.name, Qt::AccessibleTextRole);
        model_.appendRow(card);
    }
    setCurrentIndex(model_.index(0, 0));
}

void SetupCards::ReadNext()
{
    // What is still out has not come in time.
    for (auto each = reading_.keyBegin(); each != reading_.keyEnd(); ++each)
        if (QStandardItem* const late = CardOf(*each); late && late->data(CardProblem).toString().isEmpty())
            Tell(*late, Caption(Message::CardReading), late->data(CardLines).toStringList());
    const QStandardItem* const card = model_.item(read_++);
    if (!card)
        return;
    const QString path = card->data(CardPath).toString();
    reader_.start(Patience);
    if (const auto out = reading_.find(path); out != reading_.end())
        *out = true;
    else
        Read(path);
}

void SetupCards::Read(const QString& path)
{
    reading_.insert(path, false);
    try {
        InBackground(
            *this,
            [files = std::shared_ptr(files_.ForThread()), file = PathFromQString(path)] {
                return Reading(*files, file);
            },
            [this, path](const Reading& reading) { TakeIn(path, reading); });
    } catch (const std::system_error& error) {
        TakeIn(path, Reading(error));
    }
}

void SetupCards::TakeIn(const QString& path, const Reading& reading)
{
    // It may have been saved while an older showing of it was out.
    if (reading_.take(path))
        return Read(path);
    if (QStandardItem* const card = CardOf(path))
        Show(*card, reading);
    if (reading_.isEmpty())
        reader_.start(0);
    // Who waits for it may have gone on to something else.
    if (wanted_ != path)
        return;
    wanted_.clear();
    if (window()->isActiveWindow())
        emit opened(path);
}

void SetupCards::Show(QStandardItem& card, const Reading& reading)
{
    using Found = SetupCard::State;
    const SetupCard& setup = reading.card;
    QString problem;
    if (setup.state != Found::Whole)
        problem = Caption(setup.state == Found::Gone ? Message::CardGone : Message::CardNotRead);
    else if (setup.picture.empty())
        problem = Caption(Message::SheetEmpty);
    QStringList lines{ToQString(setup.modules)};
    if (use_ == Use::Open && reading.saved)
        lines << ToQString(catalogue_.Word(Message::CardSaved)) + TimeText(*reading.saved);
    lines << card.data(CardLines).toStringList();
    lines.removeAll(QString());
    card.setData(true, CardIsRead);
    card.setData(QVariant::fromValue(SvgPicture(QByteArray::fromStdString(setup.picture))), CardPicture);
    Tell(card, problem, lines);
    const QString path = card.data(CardPath).toString();
    const QString reason = ToQString(ReasonOf(setup, catalogue_)).remove('\r');
    card.setToolTip(reason.isEmpty() ? path : path + '\n' + reason);
}

void SetupCards::Tell(QStandardItem& card, const QString& problem, const QStringList& lines)
{
    card.setData(problem, CardProblem);
    card.setData(lines, CardLines);
    QStringList told{card.text(), problem};
    told << lines;
    told.removeAll(QString());
    card.setData(told.join(QStringLiteral(", ")), Qt::AccessibleTextRole);
}

QStandardItem* SetupCards::CardOf(const QString& path) const
{
    for (int row = 0; row < model_.rowCount(); ++row)
        if (model_.item(row)->data(CardPath).toString() == path)
            return model_.item(row);
    return nullptr;
}

QString SetupCards::Caption(const MessageId& text) const
{
    return ToQString(catalogue_.Caption(text));
}

void SetupCards::paintEvent(QPaintEvent* event)
{
    QListView::paintEvent(event);
    if (read_ == 0)
        reader_.start(0);
}

QString SetupCards::Chosen() const
{
    return currentIndex().data(CardPath).toString();
}

void SetupCards::Choose(const QString& path)
{
    if (const QStandardItem* const card = CardOf(path))
        setCurrentIndex(card->index());
}

void SetupCards::Open(const QModelIndex& index)
{
    if (!index.isValid())
        return;
    const QString path = index.data(CardPath).toString();
    wanted_ = index.data(CardIsRead).toBool() ? QString() : path;
    if (wanted_.isEmpty())
        emit opened(path);
}

void SetupCards::Take(const QModelIndex& index)
{
    if (!index.isValid())
        return;
    const QString path = index.data(CardPath).toString();
    if (use_ == Use::Choose)
        return emit taken(path);
    if (wanted_ == path)
        wanted_.clear();
    // A card that has yet to be read may come after it.
    read_ -= index.row() < read_ ? 1 : 0;
    model_.removeRow(index.row());
    emit taken(path);
}

void SetupCards::Retranslate()
{
    setAccessibleName(Caption(use_ == Use::Open ? Message::StartRecent : Message::TemplatesTitle));
    updateGeometry();
}

QSize SetupCards::minimumSizeHint() const
{
    const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    return DelegateOf(*this).CardSize(*this) + QSize(scrollBar, 0);
}

QSize SetupCards::sizeHint() const
{
    const QSize card = DelegateOf(*this).CardSize(*this);
    const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    // The view lays three out side by side only where there is a little more room than that.
    return {3 * card.width() + 2 * scrollBar, 2 * card.height()};
}

void SetupCards::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QListView::currentChanged(current, previous);
    emit chosen();
}

void SetupCards::keyPressEvent(QKeyEvent* event)
{
    const bool opens =
        event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
    if (opens)
        Open(currentIndex());
    else if (event->matches(QKeySequence::Delete))
        Take(currentIndex());
    else
        QListView::keyPressEvent(event);
}

bool SetupCards::HitsTakeSign(const QMouseEvent& event) const
{
    const QPoint place = event.position().toPoint();
    const QModelIndex index = indexAt(place);
    return use_ == Use::Open && event.button() == Qt::LeftButton && index.isValid() &&
           CardDelegate::TakeSign(visualRect(index)).contains(place);
}

void SetupCards::mousePressEvent(QMouseEvent* event)
{
    hasTaken_ = HitsTakeSign(*event);
    if (hasTaken_)
        Take(indexAt(event->position().toPoint()));
    else
        QListView::mousePressEvent(event);
}

// Its first half has taken a card, and another one has come below the pointer.
void SetupCards::mouseDoubleClickEvent(QMouseEvent* event)
{
    hasTaken_ = HitsTakeSign(*event);
    if (!hasTaken_)
        QListView::mouseDoubleClickEvent(event);
}

void SetupCards::mouseReleaseEvent(QMouseEvent* event)
{
    if (!std::exchange(hasTaken_, false))
        QListView::mouseReleaseEvent(event);
}

void SetupCards::hideEvent(QHideEvent* event)
{
    wanted_.clear();
    QListView::hideEvent(event);
}

void SetupCards::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    const QModelIndex index = byMouse ? indexAt(event->pos()) : currentIndex();
    if (use_ != Use::Open || !index.isValid())
        return;
    QMenu menu(this);
    menu.addAction(Caption(Message::CardTake), this,
                   [this, card = QPersistentModelIndex(index)] { Take(card); });
    menu.exec(byMouse ? event->globalPos() : viewport()->mapToGlobal(visualRect(index).center()));
}

void SetupCards::changeEvent(QEvent* event)
{
    QListView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        updateGeometry();
}

}  // namespace kelvora
