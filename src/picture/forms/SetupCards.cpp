#include "picture/forms/SetupCards.h"

#include <QContextMenuEvent>
#include <QDateTime>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMenu>

#include "picture/forms/CardDelegate.h"
#include "picture/forms/SvgPicture.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

QByteArray Bytes(const std::string& text)
{
    return QByteArray::fromStdString(text);
}

// As every date of the program is written.
QString TimeOf(const QString& path)
{
    return QFileInfo(path).lastModified().toString(QStringLiteral("yyyy-MM-dd HH:mm"));
}

CardDelegate& DelegateOf(const QListView& view)
{
    return *static_cast<CardDelegate*>(view.itemDelegate());
}

}  // namespace

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

// One file a pass of the event loop: what is typed or clicked meanwhile does not wait for the rest.
void SetupCards::ReadNext()
{
    QStandardItem* const item = model_.item(read_++);
    if (!item)
        return;
    const QString path = item->data(CardPath).toString();
    const SetupCard card = ReadSetupCard(files_, PathFromQString(path), catalogue_);
    const bool isWhole = card.state == SetupCard::State::Whole;
    QString problem;
    if (!isWhole)
        problem = ToQString(catalogue_.Caption(card.state == SetupCard::State::Gone ? Message::CardGone
                                                                                    : Message::CardNotRead));
    else if (card.picture.empty())
        problem = ToQString(catalogue_.Caption(Message::SheetEmpty));
    QStringList lines;
    if (isWhole)
        lines << ToQString(card.modules);
    if (use_ == Use::Open && card.state != SetupCard::State::Gone)
        lines << TimeOf(path);
    lines << item->data(CardLines).toStringList();
    lines.removeAll(QString());
    item->setData(QVariant::fromValue(SvgPicture(Bytes(card.picture))), CardPicture);
    item->setData(problem, CardProblem);
    item->setData(lines, CardLines);
    QStringList told{item->text(), problem};
    told << lines;
    told.removeAll(QString());
    item->setData(told.join(QStringLiteral(", ")), Qt::AccessibleTextRole);
    const QString reason = ToQString(card.reason).remove('\r');
    item->setToolTip(reason.isEmpty() ? path : path + '\n' + reason);
    reader_.start(0);
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

void SetupCards::Open(const QModelIndex& index)
{
    if (index.isValid())
        emit opened(index.data(CardPath).toString());
}

void SetupCards::Take(const QModelIndex& index)
{
    if (!index.isValid())
        return;
    const QString path = index.data(CardPath).toString();
    if (use_ == Use::Choose)
        return emit taken(path);
    // A card that has yet to be read may come after it.
    read_ -= index.row() < read_ ? 1 : 0;
    model_.removeRow(index.row());
    emit taken(path);
}

void SetupCards::Retranslate()
{
    setAccessibleName(
        ToQString(catalogue_.Caption(use_ == Use::Open ? Message::StartRecent : Message::TemplatesTitle)));
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

void SetupCards::mousePressEvent(QMouseEvent* event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    const bool takes = use_ == Use::Open && event->button() == Qt::LeftButton && index.isValid() &&
                       CardDelegate::TakeSign(visualRect(index)).contains(event->position().toPoint());
    if (takes)
        Take(index);
    else
        QListView::mousePressEvent(event);
}

void SetupCards::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    const QModelIndex index = byMouse ? indexAt(event->pos()) : currentIndex();
    if (use_ != Use::Open || !index.isValid())
        return;
    QMenu menu(this);
    menu.addAction(ToQString(catalogue_.Caption(Message::CardTake)), this,
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
