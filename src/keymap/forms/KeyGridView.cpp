#include "keymap/forms/KeyGridView.h"

#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <array>
#include <utility>

#include "keymap/forms/KeyCap.h"
#include "platform/qt/ProgramStyle.h"
#include "platform/qt/ReaderRoles.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

constexpr QSize ComfortableKey{52, 48};
constexpr QSize SmallestKey{26, 24};
constexpr int HousingMargin = 14;
constexpr int SmallestGap = 3;

/// Gap between keys, in percent of a key.
constexpr int GapPercent = 7;

int GapFor(int pitch)
{
    return std::max(SmallestGap, pitch * GapPercent / 100);
}

/// How the mouse or an arrow key chooses: `more` says what Ctrl does.
Choosing ChoosingFor(Qt::KeyboardModifiers modifiers, Choosing more)
{
    if (modifiers.testFlag(Qt::ShiftModifier))
        return Choosing::Extend;
    return modifiers.testFlag(Qt::ControlModifier) ? more : Choosing::Only;
}

QRect ToQRect(const KeyRect& rect)
{
    return {rect.left, rect.top, rect.width, rect.height};
}

}  // namespace

KeyGridView::KeyGridView(KeyMapSession& session, const MessageCatalogue& catalogue, QWidget* parent)
    : QWidget(parent),
      session_(session),
      catalogue_(catalogue),
      map_(static_cast<std::size_t>(session.Positions()), KeyType::Single)
{
    for (const MessageId& name : {Message::KeyStateUnused, Message::KeyStateSingle, Message::KeyStateVertical,
                                  Message::KeyStateHorizontal, Message::KeyStateQuadruple})
        stateNames_.push_back(ToQString(catalogue.Caption(name)));
    ShowAsList(*this);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    for (int position = 1; position <= session.Positions(); ++position) {
        auto* const cap = new KeyCap(this);
        cap->setObjectName(QStringLiteral("Keys%1").arg(position - 1));
        cap->setText(QString::number(position));
        cap->setEnabled(false);
        connect(cap, &QAbstractButton::clicked, this, [this, cap, position] {
            session_.Choose(position, ChoosingFor(cap->ClickModifiers(), Choosing::Toggle));
            emit keysChosen();
        });
        caps_.push_back(cap);
    }
}

void KeyGridView::LayoutKeyGrid()
{
    const bool hadFocus = isAncestorOf(window()->focusWidget());
    const bool fits = session_.IsEditable();
    // A cap that is going to be hidden would hand the focus to the next control first.
    if (const int ring = session_.Ring(); hadFocus && ring > 0 && Cap(ring)->isVisible())
        Cap(ring)->setFocus(Qt::OtherFocusReason);
    for (int position = 1; position <= session_.Positions(); ++position) {
        Cap(position)->setEnabled(fits);
        if (fits)
            ShowKey(position);
    }
    if (fits) {
        map_ = session_.Map();
        PlaceKeys();
    }
    if (entry_ > 0)
        Cap(entry_)->setFocusPolicy(Qt::ClickFocus);
    entry_ = session_.Ring();
    if (entry_ > 0)
        Cap(entry_)->setFocusPolicy(Qt::StrongFocus);
    if (hadFocus)
        FocusKeys();
    update();
}

void KeyGridView::ShowKey(int position)
{
    KeyCap* const cap = Cap(position);
    const QString number = QString::number(session_.KeyNumber(position));
    if (cap->text() != number)
        cap->setText(number);
    const CapMark others = session_.IsChosen(position) ? CapMark::Chosen : CapMark::None;
    cap->Show(session_.Type(position) == KeyType::Unused,
              session_.Selected() == position ? CapMark::Selected : others);
    cap->setToolTip({});
    cap->setVisible(session_.HasKey(position));
    if (const QString name = KeyName(position); cap->accessibleName() != name)
        cap->setAccessibleName(name);
}

QString KeyGridView::KeyName(int position) const
{
    const int state = std::clamp(session_.Type(position) - KeyType::Unused, 0, 4);
    const auto numbered = [this](const MessageId& word, int number) {
        return ToQString(catalogue_.Word(word)) + QString::number(number);
    };
    return QStringList{numbered(Message::KeyWord, session_.KeyNumber(position)),
                       stateNames_[static_cast<std::size_t>(state)],
                       numbered(Message::KeyRow, (position - 1) / session_.Columns() + 1),
                       numbered(Message::KeyColumn, (position - 1) % session_.Columns() + 1)}
        .join(QStringLiteral(", "));
}

void KeyGridView::FocusKeys()
{
    if (entry_ > 0)
        Cap(entry_)->setFocus(Qt::OtherFocusReason);
}

/// Rows that the model has a position in: the last one of a grid may be absent as a whole.
int KeyGridView::Rows() const
{
    std::size_t last = map_.size();
    while (last > 1 && map_[last - 1] == KeyType::Absent)
        --last;
    return (static_cast<int>(last) + session_.Columns() - 1) / session_.Columns();
}

QSize KeyGridView::SizeFor(int keyWidth, int keyHeight) const
{
    const int rows = Rows();
    const int columns = session_.Columns();
    return {columns * keyWidth + (columns - 1) * GapFor(keyWidth) + 2 * HousingMargin,
            rows * keyHeight + (rows - 1) * GapFor(keyHeight) + 2 * HousingMargin};
}

QSize KeyGridView::sizeHint() const
{
    return SizeFor(ComfortableKey.width(), ComfortableKey.height());
}

QSize KeyGridView::minimumSizeHint() const
{
    // A pixel more: what is left over of the width is no key's.
    const QSize touched = QSize(1, 1) * (ProgramStyle::LeastTarget(*this, -1) + 1);
    const QSize least = SmallestKey.expandedTo(touched);
    return SizeFor(least.width(), least.height());
}

/// Lays single keys out regularly in the largest housing of fair proportions, then sizes each key after its
/// type.
void KeyGridView::PlaceKeys()
{
    const int rows = Rows();
    const int columns = session_.Columns();
    const int pitchX = (width() - 2 * HousingMargin) / columns;
    const int pitchY = (height() - 2 * HousingMargin) / rows;
    if (pitchX <= SmallestGap || pitchY <= SmallestGap)
        return;
    const int keyWidth = std::min(pitchX, pitchY * 13 / 10);
    const int keyHeight = std::min(pitchY, pitchX * 11 / 10);
    const int gap = GapFor(std::min(keyWidth, keyHeight));

    housing_.width = columns * keyWidth - gap + 2 * HousingMargin;
    housing_.height = rows * keyHeight - gap + 2 * HousingMargin;
    housing_.left = (width() - housing_.width) / 2;
    housing_.top = (height() - housing_.height) / 2;
    places_.clear();
    for (int i = 0; i < session_.Positions(); ++i)
        places_.push_back({housing_.left + HousingMargin + i % columns * keyWidth,
                           housing_.top + HousingMargin + i / columns * keyHeight, keyWidth - gap,
                           keyHeight - gap});

    for (std::size_t i = 0; i < map_.size(); ++i) {
        caps_[i]->SetUnit(places_[i].height);
        caps_[i]->setGeometry(ToQRect(SizeKey(places_[i], map_[i], gap)));
    }
    FindRecesses();
}

/// Positions without a contact, merged to rectangles: the housing is closed there.
void KeyGridView::FindRecesses()
{
    recesses_.clear();
    const auto columns = static_cast<std::size_t>(session_.Columns());
    for (std::size_t i = 0; i < map_.size(); ++i) {
        if (map_[i] != KeyType::NoKey)
            continue;
        KeyRect part = places_[i];
        for (; (i + 1) % columns != 0 && i + 1 < map_.size() && map_[i + 1] == KeyType::NoKey; ++i)
            part.width = places_[i + 1].left + places_[i + 1].width - part.left;
        AddRecess(part);
    }
}

/// One row's part lengthens the recess that ends above it, where both are equally wide.
void KeyGridView::AddRecess(const KeyRect& part)
{
    const auto above = std::ranges::find_if(recesses_, [&](const KeyRect& recess) {
        return recess.left == part.left && recess.width == part.width &&
               part.top - recess.top - recess.height < part.height;
    });
    if (above == recesses_.end())
        recesses_.push_back(part);
    else
        above->height = part.top + part.height - above->top;
}

void KeyGridView::paintEvent(QPaintEvent* /*event*/)
{
    const KeyboardColours& colours = KeyboardColours::For(palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colours.housingEdge, 1));
    painter.setBrush(colours.housing);
    painter.drawRoundedRect(QRectF(ToQRect(housing_)).adjusted(0.5, 0.5, -0.5, -0.5), 9, 9);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colours.recess);
    for (const KeyRect& recess : recesses_)
        painter.drawRoundedRect(ToQRect(recess), 6, 6);
}

void KeyGridView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    PlaceKeys();
}

void KeyGridView::keyPressEvent(QKeyEvent* event)
{
    static constexpr std::array arrows{
        std::pair{Qt::Key_Left, Direction::Left}, std::pair{Qt::Key_Right, Direction::Right},
        std::pair{Qt::Key_Up, Direction::Up}, std::pair{Qt::Key_Down, Direction::Down}};
    const auto* const arrow = std::ranges::find(arrows, event->key(), &decltype(arrows)::value_type::first);
    if (arrow != arrows.end())
        session_.Move(arrow->second, ChoosingFor(event->modifiers(), Choosing::Add));
    else if (event->key() == Qt::Key_Space && entry_ > 0)
        session_.Choose(entry_, ChoosingFor(event->modifiers(), Choosing::Toggle));
    else if (event->matches(QKeySequence::SelectAll))
        session_.ChooseAll();
    else
        return QWidget::keyPressEvent(event);
    emit keysChosen();
}

}  // namespace kelvora
