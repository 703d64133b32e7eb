#include "layout/forms/PlacingMode.h"

#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>

#include "layout/forms/StripView.h"
#include "platform/qt/Announcement.h"

namespace kelvora {

namespace {

// Elsewhere a program may not move the pointer; the module under it stays in the strip all the same.
bool CanMovePointer()
{
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

}  // namespace

PlacingMode::PlacingMode(StripView& strip, const SetupDocument& document, ModuleKind kind)
    : QObject(&strip),
      strip_(strip),
      document_(document),
      kind_(kind),
      range_(PlacesFor(kind, document.Modules)),
      place_(std::clamp(PlaceOf(kind, document.Modules), range_.first, range_.last)),
      pointerAtStart_(QCursor::pos())
{
    Preview(std::nullopt);
    TellPlace();
    strip_.setFocus();
    strip_.installEventFilter(this);
    strip_.grabMouse(Qt::SizeAllCursor);
    // A new module comes up under the pointer; one that is moved stays where it is until the pointer moves.
    const QPoint pointer = strip_.mapFromGlobal(pointerAtStart_);
    if (!FindModule(document_.Modules, kind_) && strip_.StripRect().contains(pointer))
        FollowPointer(pointer.x());
}

PlacingMode::~PlacingMode()
{
    if (!ended_)
        strip_.releaseMouse();
}

void PlacingMode::Preview(std::optional<int> pointerX)
{
    strip_.ShowModules(PlaceModule(document_, kind_, place_).Modules);
    strip_.Float(*ButtonOf(kind_), pointerX);
}

void PlacingMode::TellPlace()
{
    Announce(strip_, strip_.Button(*ButtonOf(kind_)).accessibleName());
}

void PlacingMode::MoveTo(std::size_t place)
{
    place_ = std::clamp(place, range_.first, range_.last);
    Preview(std::nullopt);
    TellPlace();
}

void PlacingMode::HoldPointer(QPoint global)
{
    const QRect strip = strip_.StripRect();
    const QPoint inside = strip_.mapFromGlobal(global);
    const QPoint held(std::clamp(inside.x(), strip.left(), strip.right()),
                      std::clamp(inside.y(), strip.top(), strip.bottom()));
    if (held != inside && CanMovePointer())
        QCursor::setPos(strip_.mapToGlobal(held));
}

void PlacingMode::MouseMoved(const QMouseEvent& event)
{
    // The event that the grab itself brings is no movement.
    if (event.globalPosition().toPoint() == pointerAtStart_)
        return;
    HoldPointer(event.globalPosition().toPoint());
    FollowPointer(event.position().toPoint().x());
}

void PlacingMode::FollowPointer(int x)
{
    // Over the open gap, where the module itself stands, the place stays.
    const auto hit = strip_.HitAt(x);
    if (hit && KindOfButton(hit->button) != kind_)
        place_ = PlaceOfHit(*hit, kind_, document_.Modules);
    const QRect strip = strip_.StripRect();
    Preview(std::clamp(x, strip.left(), strip.right()));
}

bool PlacingMode::TakeKey(const QKeyEvent& event)
{
    switch (event.key()) {
        case Qt::Key_Left:
            MoveTo(place_ == 0 ? 0 : place_ - 1);
            break;
        case Qt::Key_Right:
            MoveTo(place_ + 1);
            break;
        case Qt::Key_Home:
            MoveTo(range_.first);
            break;
        case Qt::Key_End:
            MoveTo(range_.last);
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            End(true);
            break;
        case Qt::Key_Escape:
            End(false);
            if (CanMovePointer())
                QCursor::setPos(pointerAtStart_);
            break;
        default:
            break;
    }
    return true;
}

bool PlacingMode::eventFilter(QObject* /*watched*/, QEvent* event)
{
    if (ended_)
        return false;
    switch (event->type()) {
        case QEvent::MouseMove:
            MouseMoved(*static_cast<QMouseEvent*>(event));
            return true;
        case QEvent::MouseButtonPress:
            pressed_ = static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton;
            return true;
        case QEvent::MouseButtonRelease:
            // The release of the click that started the placing drops nothing.
            if (pressed_) {
                strip_.SwallowDoubleClick();
                End(true);
            }
            return true;
        case QEvent::MouseButtonDblClick:
        case QEvent::ContextMenu:
            return true;
        case QEvent::ShortcutOverride:
            event->accept();
            return true;
        case QEvent::KeyPress:
            return TakeKey(*static_cast<QKeyEvent*>(event));
        case QEvent::FocusOut:
        case QEvent::Hide:
            End(false);
            return false;
        default:
            return false;
    }
}

void PlacingMode::End(bool drop)
{
    ended_ = true;
    strip_.releaseMouse();
    strip_.Float(std::nullopt, std::nullopt);
    strip_.ShowModules(document_.Modules);
    emit ended(drop ? std::optional(place_) : std::nullopt);
    deleteLater();
}

}  // namespace kelvora
