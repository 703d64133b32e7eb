#include "platform/qt/ElidedLabel.h"

#include <QPainter>

namespace kelvora {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const QRect room = contentsRect();
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(text().simplified(), Qt::ElideMiddle, room.width()));
}

}  // namespace kelvora
