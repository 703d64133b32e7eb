#include "Photographer.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QPainter>
#include <QPixmap>
#include <QTimer>
#include <exception>
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

void Photographer::TakeDialog(const std::function<void()>& open,
                              const std::function<void(QWidget&)>& act) const
{
    bool seen = false;
    std::exception_ptr failure;
    QTimer watch;
    watch.callOnTimeout([&] {
        QWidget* const modal = QApplication::activeModalWidget();
        if (!modal)
            return;
        watch.stop();
        seen = true;
        try {
            act(*modal);
        } catch (...) {
            // Qt's event loop must not see it; it goes on below.
            failure = std::current_exception();
        }
        // Not closed: a window may ask whether it may.
        if (modal->isVisible())
            modal->hide();
    });
    watch.start(0);
    open();
    if (failure)
        std::rethrow_exception(failure);
    if (!seen)
        throw std::runtime_error("no dialog came");
}

}  // namespace kelvora
