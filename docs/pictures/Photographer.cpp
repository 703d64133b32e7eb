#include "Photographer.h"

#include <QCoreApplication>
#include <QDir>
#include <QPainter>
#include <QPixmap>
#include <stdexcept>

namespace kelvora {

namespace {

constexpr QColor Edge(0x80, 0x86, 0x8C);

void DrawEdge(QImage& picture)
{
    QPainter painter(&picture);
    painter.setPen(Edge);
    painter.drawRect(picture.rect().adjusted(0, 0, -1, -1));
}

// The window in a frame with its title, as a desktop shows it.
QImage Framed(QWidget& window)
{
    constexpr int Title = 26;
    constexpr QColor Ground(0xDD, 0xE1, 0xE6);
    const QPixmap content = window.grab();
    QImage picture(content.width() + 2, content.height() + Title + 2, QImage::Format_RGB32);
    picture.fill(Ground);
    QPainter painter(&picture);
    painter.drawPixmap(1, Title + 1, content);
    painter.setPen(Qt::black);
    painter.drawText(QRect(0, 0, picture.width(), Title), Qt::AlignCenter,
                     window.windowTitle().remove(QLatin1String("[*]")));
    painter.end();
    DrawEdge(picture);
    return picture;
}

}  // namespace

Photographer::Photographer(const QString& folder) : folder_(folder)
{
    if (!QDir().mkpath(folder))
        throw std::runtime_error(folder.toStdString() + ": cannot be made");
}

void Photographer::Take(QWidget& window, const QString& name) const
{
    QCoreApplication::processEvents();
    Save(Framed(window), name);
}

void Photographer::Keep(QImage picture, const QString& name) const
{
    DrawEdge(picture);
    Save(picture, name);
}

void Photographer::Save(const QImage& picture, const QString& name) const
{
    const QString path = folder_ + '/' + name + ".png";
    if (!picture.save(path))
        throw std::runtime_error(path.toStdString() + ": cannot be written");
}

}  // namespace kelvora
