#include "picture/forms/PictureView.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "platform/qt/ReaderRoles.h"

namespace kelvora {

namespace {

constexpr QSize Smallest(180, 130);

/// Larger than this much of its own size a drawing looks coarse beside the window's texts.
constexpr double MostScale = 1.5;

}  // namespace

PictureView::PictureView(QWidget* parent) : QWidget(parent)
{
    ShowAsPicture(*this);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PictureView::Show(const std::string& svg, const QString& text)
{
    if (svg == svg_ && text == text_)
        return;
    svg_ = svg;
    text_ = text;
    if (!svg.empty())
        drawing_.load(QByteArray(svg.data(), static_cast<qsizetype>(svg.size())));
    updateGeometry();
    update();
}

QSize PictureView::sizeHint() const
{
    return svg_.empty() ? Smallest : drawing_.defaultSize();
}

QSize PictureView::minimumSizeHint() const
{
    return Smallest;
}

QRectF PictureView::Place() const
{
    const QSizeF own = drawing_.defaultSize();
    const double scale = std::min({width() / own.width(), height() / own.height(), MostScale});
    const QSizeF size = own * scale;
    return {QPointF((width() - size.width()) / 2, 0), size};
}

void PictureView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    if (svg_.empty())
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, text_);
    else
        drawing_.render(&painter, Place());
}

void PictureView::mousePressEvent(QMouseEvent* event)
{
    if (svg_.empty() || event->button() != Qt::LeftButton)
        return QWidget::mousePressEvent(event);
    const QRectF place = Place();
    const QRectF box = drawing_.viewBoxF();
    const QPointF point = (event->position() - place.topLeft()) * (box.width() / place.width());
    emit clicked(qFloor(point.x()), qFloor(point.y()));
}

}  // namespace kelvora
