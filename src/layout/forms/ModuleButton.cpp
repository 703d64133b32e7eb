#include "layout/forms/ModuleButton.h"

#include <QCryptographicHash>
#include <QKeyEvent>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace kelvora {

namespace {

constexpr int FocusFrameWidth = 2;
constexpr int FocusFrameRadius = 5;

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
    const bool hovered = underMouse() && isEnabled();
    if (!hasFocus() && !hovered)
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    QColor frame = palette().color(QPalette::Highlight);
    if (!hasFocus())
        frame.setAlphaF(0.5F);
    painter.setPen(QPen(frame, FocusFrameWidth));
    constexpr qreal Inset = FocusFrameWidth / 2.0;
    painter.drawRoundedRect(QRectF(rect()).adjusted(Inset, Inset, -Inset, -Inset), FocusFrameRadius,
                            FocusFrameRadius);
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
