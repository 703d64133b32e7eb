#include "app/forms/Icons.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>
#include <memory>

namespace kelvora {

namespace {

constexpr qreal DisabledOpacity = 0.35;

QByteArray ReadDrawing(const QString& name)
{
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class DrawnIcon final : public QIconEngine {
public:
    explicit DrawnIcon(QString name) : name_(std::move(name)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override
    {
        const QPalette palette = QApplication::palette();
        QSvgRenderer& drawing = DrawingIn(
            palette.color(mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText));
        painter->save();
        if (mode == QIcon::Disabled)
            painter->setOpacity(DisabledOpacity);
        drawing.render(painter, rect);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new DrawnIcon(name_); }

private:
    // A toolbar button is drawn again with each move of the mouse over it: the drawing is read once a colour.
    QSvgRenderer& DrawingIn(const QColor& colour)
    {
        if (!drawing_ || colour != colour_)
            drawing_ = std::make_unique<QSvgRenderer>(
                ReadDrawing(name_).replace("currentColor", colour.name().toLatin1()));
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
