#include "app/forms/Icons.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

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
        if (drawing_.isEmpty())
            drawing_ = ReadDrawing(name_);
        const QPalette palette = QApplication::palette();
        const QColor colour =
            palette.color(mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText);
        QSvgRenderer renderer(QByteArray(drawing_).replace("currentColor", colour.name().toLatin1()));
        painter->save();
        if (mode == QIcon::Disabled)
            painter->setOpacity(DisabledOpacity);
        renderer.render(painter, rect);
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
    QString name_;
    QByteArray drawing_;
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
