#include "windows/forms/Icons.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>
#include <algorithm>
#include <memory>

namespace kelvora {

namespace {

constexpr float DisabledOpacity = 0.35F;

QByteArray ReadIcon(const QString& name)
{
    QFile file(QStringLiteral(":/icons/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QRgb Mix(QRgb black, QRgb white, QRgb ink)
{
    const auto channel = [](int low, int high, int share) {
        return low + ((high - low) * share + 127) / 255;
    };
    return qRgba(channel(qRed(black), qRed(white), qRed(ink)),
                 channel(qGreen(black), qGreen(white), qGreen(ink)),
                 channel(qBlue(black), qBlue(white), qBlue(ink)), qAlpha(black));
}

// The icon from what kelvora-icons has drawn, which tells the file's form; null in a size that it has not
// drawn.
QImage PictureOf(const QString& name, const QSize& size, const QColor& colour)
{
    const QByteArray drawn = ReadIcon(QStringLiteral("%1.%2").arg(name).arg(size.width()));
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    if (drawn.isEmpty() || drawn.size() != 2 * picture.sizeInBytes())
        return {};
    const auto* const black = reinterpret_cast<const QRgb*>(drawn.constData());
    const auto* const white = black + drawn.size() / 2 / qsizetype(sizeof(QRgb));
    std::transform(black, white, white, reinterpret_cast<QRgb*>(picture.bits()),
                   [ink = colour.rgb()](QRgb low, QRgb high) { return Mix(low, high, ink); });
    return picture;
}

void Fade(QImage& picture)
{
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.fillRect(picture.rect(), QColor::fromRgbF(0, 0, 0, DisabledOpacity));
}

class DrawnIcon final : public QIconEngine {
public:
    explicit DrawnIcon(QString name) : name_(std::move(name)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        const QSizeF pixels = QSizeF(rect.size()) * painter->device()->devicePixelRatio();
        painter->drawPixmap(rect, pixmap(pixels.toSize(), mode, state));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/) override
    {
        const QColor colour = QApplication::palette().color(
            mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText);
        QImage picture = PictureOf(name_, size, colour);
        if (picture.isNull())
            picture = Draw(size, colour);
        // Not while it is drawn: where two strokes cross they would show through.
        if (mode == QIcon::Disabled)
            Fade(picture);
        return QPixmap::fromImage(picture);
    }

    QIconEngine* clone() const override { return new DrawnIcon(name_); }

private:
    QImage Draw(const QSize& size, const QColor& colour)
    {
        QImage picture(size, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        DrawingIn(colour).render(&painter, QRect(QPoint(), size));
        return picture;
    }

    // A toolbar button is drawn again with each move of the mouse over it: the drawing is read once a colour.
    QSvgRenderer& DrawingIn(const QColor& colour)
    {
        if (!drawing_ || colour != colour_)
            drawing_ = std::make_unique<QSvgRenderer>(
                ReadIcon(name_ + QStringLiteral(".svg")).replace("currentColor", colour.name().toLatin1()));
        colour_ = colour;
        return *drawing_;
    }

    QString name_;
    QColor colour_;
    std::unique_ptr<QSvgRenderer> drawing_;
};

}  // namespace

QIcon ThemedIcon(const QString& name)
{
    return QIcon(new DrawnIcon(name));
}

QIcon ProgramIcon()
{
    return QIcon(new DrawnIcon(QStringLiteral("kelvora")));
}

}  // namespace kelvora
