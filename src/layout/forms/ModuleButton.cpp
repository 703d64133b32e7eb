#include "layout/forms/ModuleButton.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QPainter>
#include <QStyleHints>
#include <utility>

#include "platform/qt/ChoiceMarks.h"
#include "platform/qt/ReaderRoles.h"

namespace kelvora {

namespace {

constexpr int FrameRadius = 5;
constexpr double DisabledOpacity = 0.4;

}  // namespace

ModuleButton::ModuleButton(StripButton button, QWidget* parent) : QAbstractButton(parent), button_(button)
{
    setObjectName(QStringLiteral("cbModule%1").arg(static_cast<int>(button)));
    setFocusPolicy(Qt::StrongFocus);
    ShowAsEntry(*this, [this] { return selected_; });
    hide();
}

void ModuleButton::SetPicture(QByteArray svg)
{
    if (svg == picture_.Svg())
        return;
    picture_ = SvgPicture(std::move(svg));
    update();
}

void ModuleButton::SetSelected(bool selected)
{
    if (std::exchange(selected_, selected) == selected)
        return;
    update();
    TellSelection(*this);
}

QSize ModuleButton::sizeHint() const
{
    const StripButtonShape& shape = ShapeOf(button_);
    return {shape.width / TwipsPerPixel, shape.height / TwipsPerPixel};
}

void ModuleButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setOpacity(isEnabled() ? 1 : DisabledOpacity);
    painter.drawPixmap(rect(), picture_.Pixels(size(), devicePixelRatioF()));
    painter.setRenderHint(QPainter::Antialiasing);
    if (selected_) {
        painter.setPen(ChosenFrame(palette(), hasFocus()));
    } else if (underMouse() && isEnabled()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(HoverTint(palette()));
    } else {
        return;
    }
    constexpr qreal Inset = ChosenFrameWidth / 2.0;
    painter.drawRoundedRect(QRectF(rect()).adjusted(Inset, Inset, -Inset, -Inset), FrameRadius, FrameRadius);
}

void ModuleButton::mousePressEvent(QMouseEvent* event)
{
    QAbstractButton::mousePressEvent(event);
    if (event->button() != Qt::LeftButton)
        return hold_.stop();
    heldAt_ = event->pos();
    hold_.start(QGuiApplication::styleHints()->mousePressAndHoldInterval(), this);
}

void ModuleButton::mouseMoveEvent(QMouseEvent* event)
{
    QAbstractButton::mouseMoveEvent(event);
    if ((event->pos() - heldAt_).manhattanLength() >= QApplication::startDragDistance())
        hold_.stop();
}

void ModuleButton::mouseReleaseEvent(QMouseEvent* event)
{
    hold_.stop();
    QAbstractButton::mouseReleaseEvent(event);
}

void ModuleButton::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != hold_.timerId())
        return QAbstractButton::timerEvent(event);
    hold_.stop();
    // The press may have ended elsewhere, or something may have come over the button.
    if (!isDown() || !isVisible() || QApplication::activeModalWidget() || QApplication::activePopupWidget())
        return;
    // The release that follows is no click.
    setDown(false);
    QContextMenuEvent menu(QContextMenuEvent::Other, heldAt_, mapToGlobal(heldAt_));
    QCoreApplication::sendEvent(this, &menu);
}

void ModuleButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void ModuleButton::enterEvent(QEnterEvent* /*event*/)
{
    update();
}

void ModuleButton::leaveEvent(QEvent* /*event*/)
{
    update();
}

}  // namespace kelvora
