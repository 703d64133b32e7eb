#include "keymap/forms/KeyCap.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "platform/qt/Contrast.h"
#include "platform/qt/ReaderRoles.h"

namespace kelvora {

namespace {

const QColor SelectedFace(0, 255, 255);
const QColor SelectedSide(0, 168, 178);
const QColor ChosenFace(186, 250, 252);
const QColor ChosenSide(96, 190, 198);
const QColor MarkedNumber(8, 44, 50);

/// Closer lines, in pixels, make one grey of a small cap.
constexpr double LeastHatch = 4;

/// How much of a cap that cannot be chosen shows before its housing.
constexpr double DisabledOpacity = 0.4;

/// How much the lines on an unused key stand out of it at least, a little more than the 3 to 1 of a sign.
constexpr double SignContrast = 3.2;

struct CapColours {
    QColor face;
    QColor side;
    QColor number;
    bool flat = false;  ///< the face is one colour, so that the mark is exactly that
};

CapColours ColoursOf(const KeyboardColours& colours, bool unused, CapMark mark)
{
    switch (mark) {
        case CapMark::Selected:
            return {SelectedFace, SelectedSide, MarkedNumber, true};
        case CapMark::Chosen:
            return {ChosenFace, ChosenSide, MarkedNumber, true};
        case CapMark::None:
            break;
    }
    if (unused)
        return {colours.unusedFace, colours.unusedSide, colours.unusedNumber, true};
    return {colours.face, colours.side, colours.number, false};
}

/// Thin slanting lines over the face of a key that does nothing, clear of its number.
void PaintHatch(QPainter& painter, const QRectF& face, const QRectF& number, double radius,
                const QColor& colour, double step)
{
    QPainterPath clip;
    clip.addRoundedRect(face, radius, radius);
    QPainterPath clear;
    clear.addRect(number);
    painter.save();
    painter.setClipPath(clip.subtracted(clear));
    painter.setPen(QPen(colour, std::max(1.0, step / 7)));
    const int lines = static_cast<int>((face.width() + face.height()) / step) + 1;
    for (int i = 0; i < lines; ++i) {
        const double x = face.left() - face.height() + i * step;
        painter.drawLine(QPointF(x, face.bottom()), QPointF(x + face.height(), face.top()));
    }
    painter.restore();
}

/// What tells a chosen key without its colour; `width` tells the one that is named.
void PaintFrame(QPainter& painter, const QRectF& face, double radius, double width)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(MarkedNumber, std::max(1.0, width)));
    painter.drawRoundedRect(face.adjusted(width, width, -width, -width), radius, radius);
}

}  // namespace

const KeyboardColours& KeyboardColours::For(const QPalette& palette)
{
    static const KeyboardColours light{{92, 98, 107},   {70, 75, 83},  {79, 85, 93},    {250, 250, 247},
                                       {206, 208, 206}, {38, 42, 48},  {186, 191, 198}, {154, 160, 167},
                                       {34, 38, 44},    {255, 196, 64}};
    static const KeyboardColours dark{{14, 15, 17},    {62, 66, 72},    {8, 9, 10},   {92, 98, 108},
                                      {58, 63, 70},    {238, 240, 243}, {43, 46, 51}, {36, 38, 42},
                                      {196, 201, 208}, {255, 196, 64}};
    return palette.color(QPalette::Window).lightness() < 128 ? dark : light;
}

KeyCap::KeyCap(QWidget* parent) : QAbstractButton(parent)
{
    ShowAsEntry(*this, [this] { return mark_ != CapMark::None; });
    setFocusPolicy(Qt::ClickFocus);
    setAttribute(Qt::WA_Hover);
}

void KeyCap::Show(bool unused, CapMark mark)
{
    if (unused == unused_ && mark == mark_)
        return;
    const bool wasChosen = mark_ != CapMark::None;
    unused_ = unused;
    mark_ = mark;
    update();
    if (wasChosen != (mark != CapMark::None))
        TellSelection(*this);
}

void KeyCap::SetUnit(int keyHeight)
{
    if (keyHeight == unit_)
        return;
    unit_ = keyHeight;
    QFont number = font();
    number.setPixelSize(std::max(8, keyHeight * 34 / 100));
    setFont(number);
}

void KeyCap::paintEvent(QPaintEvent* /*event*/)
{
    const CapColours colours = ColoursOf(KeyboardColours::For(palette()), unused_, mark_);
    const double unit = std::max(unit_, 1);
    const double radius = unit * 0.13;
    const QRectF body = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    const double press = isDown() ? unit * 0.03 : 0;
    const QRectF face = body.adjusted(unit * 0.07, unit * 0.05 + press, -unit * 0.07, -unit * 0.13 + press);

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(DisabledOpacity);
    const QRectF number = text().isEmpty()
                              ? QRectF()
                              : painter.boundingRect(face, Qt::AlignCenter, text()).adjusted(-2, 0, 2, 0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colours.side);
    painter.drawRoundedRect(body, radius, radius);

    const QColor top =
        underMouse() && isEnabled() && !colours.flat ? colours.face.lighter(106) : colours.face;
    if (colours.flat) {
        painter.setBrush(top);
    } else {
        QLinearGradient slope(face.topLeft(), face.bottomLeft());
        slope.setColorAt(0, top.lighter(104));
        slope.setColorAt(1, top.darker(105));
        painter.setBrush(slope);
    }
    const QColor edge = colours.side.lighter(colours.flat ? 104 : 112);
    painter.setPen(QPen(unused_ ? Standing(colours.number, colours.face, SignContrast) : edge, 1));
    painter.drawRoundedRect(face, radius * 0.8, radius * 0.8);
    if (unused_)
        PaintHatch(painter, face, number, radius * 0.8, Standing(colours.number, colours.face, SignContrast),
                   std::max(LeastHatch, unit * 0.24));
    if (mark_ != CapMark::None)
        PaintFrame(painter, face, radius * 0.8, unit * (mark_ == CapMark::Selected ? 0.09 : 0.04));
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(KeyboardColours::For(palette()).focus, std::max(2.0, unit * 0.05)));
        painter.drawRoundedRect(body.adjusted(1, 1, -1, -1), radius, radius);
    }
    painter.setPen(colours.number);
    painter.drawText(face, Qt::AlignCenter, text());
}

void KeyCap::mouseReleaseEvent(QMouseEvent* event)
{
    clickModifiers_ = event->modifiers();
    QAbstractButton::mouseReleaseEvent(event);
    clickModifiers_ = {};
}

// The grid moves among the caps and chooses them; a cap takes no key of its own.
void KeyCap::keyPressEvent(QKeyEvent* event)
{
    event->ignore();
}

void KeyCap::keyReleaseEvent(QKeyEvent* event)
{
    event->ignore();
}

}  // namespace kelvora
