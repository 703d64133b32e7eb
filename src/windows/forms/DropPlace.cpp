#include "windows/forms/DropPlace.h"

#include <QPainter>

namespace kelvora {

namespace {

// In pixels.
constexpr int PlaceHeight = 60;
constexpr int PlaceMargin = 10;
constexpr int EdgeWidth = 2;
constexpr int PlaceCorner = 6;

constexpr float PlaceEdge = 0.55F;

}  // namespace

DropPlace::DropPlace(QWidget* parent) : QLabel(parent)
{
    setObjectName(QStringLiteral("DropPlace"));
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setMargin(PlaceMargin);
    setMinimumHeight(PlaceHeight);
}

void DropPlace::ShowAbove(bool isAbove)
{
    isAbove_ = isAbove;
    update();
}

void DropPlace::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor edge = palette().color(QPalette::WindowText);
    edge.setAlphaF(PlaceEdge);
    painter.setPen(isAbove_ ? QPen(palette().color(QPalette::Highlight), EdgeWidth)
                            : QPen(edge, EdgeWidth / 2.0, Qt::DashLine));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), PlaceCorner, PlaceCorner);
    QLabel::paintEvent(event);
}

}  // namespace kelvora
