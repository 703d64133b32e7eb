#include "keymap/forms/KeyPicture.h"

#include <QPainter>

#include "keymap/forms/KeyCap.h"

namespace kelvora {

namespace {

constexpr int Edge = 2;
constexpr int Cell = KeyPictureSide / 2 - Edge;

/// Sharp on every screen up to 300 %.
constexpr int Scale = 3;

}  // namespace

QIcon KeyPicture(const QSize& cells, bool unused, const QPalette& palette)
{
    const KeyboardColours& colours = KeyboardColours::For(palette);
    QPixmap picture(KeyPictureSide * Scale, KeyPictureSide * Scale);
    picture.setDevicePixelRatio(Scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colours.housingEdge, 1));
    painter.setBrush(colours.housing);
    painter.drawRoundedRect(QRectF(0.5, 0.5, KeyPictureSide - 1, KeyPictureSide - 1), 4, 4);

    KeyCap cap(nullptr);
    cap.setPalette(palette);
    cap.SetUnit(Cell);
    cap.resize(cells * Cell);
    cap.Show(unused, CapMark::None);
    cap.render(&painter, QPoint(Edge, Edge), QRegion(), {});
    return picture;
}

}  // namespace kelvora
