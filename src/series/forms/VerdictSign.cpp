#include "series/forms/VerdictSign.h"

#include <QPainter>
#include <algorithm>

#include "platform/qt/ReaderRoles.h"

namespace kelvora {

namespace {

using State = Lane::State;

constexpr int SmallestFont = 14;
constexpr int LargestFont = 72;

constexpr int WholeCircle = 360 * 16;

}  // namespace

std::optional<QColor> GroundOf(State state)
{
    switch (state) {
        case State::Done:
            return QColor(0x1B, 0x7A, 0x38);
        case State::Same:
            return QColor(0x1A, 0x6A, 0x86);
        case State::Failed:
            return QColor(0xB3, 0x1E, 0x1E);
        case State::Ended:
        case State::Stopped:
            return QColor(0x5A, 0x5A, 0x5A);
        case State::NoPort:
            return QColor(0x8F, 0x55, 0x00);
        case State::Working:
            return QColor(0x1F, 0x4F, 0xA0);
        case State::Idle:
        case State::Waiting:
            break;
    }
    return std::nullopt;
}

VerdictSign::VerdictSign(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("VerdictSign"));
    ShowAsPicture(*this);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void VerdictSign::ShowState(State state, const QString& words, int percent)
{
    state_ = state;
    words_ = words;
    percent_ = percent;
    setAccessibleName(words);
    update();
}

// The largest in which the words fit, whole words on a line.
QFont VerdictSign::FittingFont(const QRectF& place) const
{
    QFont fitting = font();
    fitting.setBold(true);
    for (int size = LargestFont; size >= SmallestFont; --size) {
        fitting.setPixelSize(size);
        const QRectF taken =
            QFontMetricsF(fitting).boundingRect(place, Qt::AlignCenter | Qt::TextWordWrap, words_);
        if (taken.width() <= place.width() && taken.height() <= place.height())
            break;
    }
    return fitting;
}

void VerdictSign::PaintSign(QPainter& painter, const QRectF& place) const
{
    const double side = place.height();
    const QPointF middle = place.center();
    const auto at = [&](double x, double y) { return middle + QPointF(x, y) * side; };
    const QColor colour = painter.pen().color();
    painter.setPen(QPen(colour, side / 8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    switch (state_) {
        case State::Done:
        case State::Same:
            painter.drawPolyline(QPolygonF({at(-0.35, 0.02), at(-0.1, 0.28), at(0.38, -0.3)}));
            // Nothing had to be done: a line below.
            if (state_ == State::Same)
                painter.drawLine(at(-0.35, 0.44), at(0.38, 0.44));
            break;
        case State::Failed:
        case State::Ended:
            painter.drawLine(at(-0.3, -0.3), at(0.3, 0.3));
            painter.drawLine(at(-0.3, 0.3), at(0.3, -0.3));
            break;
        case State::Stopped:
            painter.fillRect(QRectF(at(-0.28, -0.28), at(0.28, 0.28)), colour);
            break;
        case State::Working: {
            const QRectF circle(at(-0.36, -0.36), at(0.36, 0.36));
            painter.setOpacity(0.3);
            painter.drawEllipse(circle);
            painter.setOpacity(1);
            constexpr int Top = WholeCircle / 4;
            painter.drawArc(circle, Top, -WholeCircle * std::max(percent_, 1) / 100);
            break;
        }
        case State::NoPort:
            painter.drawLine(at(0, -0.32), at(0, 0.1));
            painter.drawPoint(at(0, 0.34));
            break;
        case State::Waiting:
            for (const double x : {-0.3, 0.0, 0.3})
                painter.drawPoint(at(x, 0));
            break;
        case State::Idle:
            break;
    }
    painter.setPen(colour);
}

void VerdictSign::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(GroundOf(state_) ? QColor(Qt::white) : palette().color(QPalette::WindowText));
    const QRectF whole = QRectF(rect()).adjusted(8, 6, -8, -6);
    const QRectF top(whole.left(), whole.top(), whole.width(), whole.height() * 0.5);
    const QRectF bottom(whole.left(), top.bottom() + 4, whole.width(), whole.height() * 0.5 - 4);
    const double side = std::min(top.width(), top.height());
    PaintSign(painter, QRectF(top.center() - QPointF(side, side) / 2, QSizeF(side, side)));
    painter.setFont(FittingFont(bottom));
    painter.drawText(bottom, Qt::AlignCenter | Qt::TextWordWrap, words_);
}

}  // namespace kelvora
