#include "layout/forms/ModuleButton.h"

#include <QCryptographicHash>
#include <QKeyEvent>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <utility>

namespace kelvora {

namespace {

constexpr int FrameWidth = 2;
constexpr int FrameRadius = 5;
constexpr float FaintFrame = 0.5F;
constexpr float HoverTint = 0.12F;

}  // namespace

ModuleButton::ModuleButton(StripButton button, QWidget* parent) : QAbstractButton(parent), button_(button)
{
    setObjectName(QStringLiteral("cbModule%1").arg(static_cast<int>(button)));
    setFocusPolicy(Qt::StrongFocus);
    hide();
}

void ModuleButton::SetPicture(QByteArray svg)
{
    if (svg == svg_)
        return;
    svg_ = std::move(svg);
    // Windows that show the same module share its picture.
    cacheKey_ = QString::fromLatin1(QCryptographicHash::hash(svg_, QCryptographicHash::Md5).toHex());
    update();
}

void ModuleButton::SetSelected(bool selected)
{
    if (std::exchange(selected_, selected) != selected)
        update();
}

QSize ModuleButton::sizeHint() const
{
    const StripButtonShape& shape = ShapeOf(button_);
    return {shape.width / TwipsPerPixel, shape.height / TwipsPerPixel};
}

QPixmap ModuleButton::Picture() const
{
    const QSize pixels = size() * devicePixelRatioF();
    const QString key = cacheKey_ + QStringLiteral("-%1x%2").arg(pixels.width()).arg(pixels.height());
    QPixmap picture;
    if (QPixmapCache::find(key, &picture))
        return picture;
    picture = QPixmap(pixels);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    QSvgRenderer(svg_).render(&painter);
    painter.end();
    picture.setDevicePixelRatio(devicePixelRatioF());
    QPixmapCache::insert(key, picture);
    return picture;
}

void ModuleButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.drawPixmap(rect(), Picture());
    QColor mark = palette().color(QPalette::Highlight);
    painter.setRenderHint(QPainter::Antialiasing);
    if (selected_) {
        mark.setAlphaF(hasFocus() ? 1 : FaintFrame);
        painter.setPen(QPen(mark, FrameWidth));
    } else if (underMouse() && isEnabled()) {
        // A frame would look like another selection.
        mark.setAlphaF(HoverTint);
        painter.setPen(Qt::NoPen);
        painter.setBrush(mark);
    } else {
        return;
    }
    constexpr qreal Inset = FrameWidth / 2.0;
    painter.drawRoundedRect(QRectF(rect()).adjusted(Inset, Inset, -Inset, -Inset), FrameRadius, FrameRadius);
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
