#include "picture/forms/SvgPicture.h"

#include <QCryptographicHash>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <utility>

namespace kelvora {

SvgPicture::SvgPicture(QByteArray svg)
    : svg_(std::move(svg)),
      cacheKey_(QString::fromLatin1(QCryptographicHash::hash(svg_, QCryptographicHash::Md5).toHex()))
{
}

QPixmap SvgPicture::Pixels(const QSize& size, qreal ratio) const
{
    const QSize pixels = size * ratio;
    const QString key = cacheKey_ + QStringLiteral("-%1x%2").arg(pixels.width()).arg(pixels.height());
    QPixmap picture;
    if (QPixmapCache::find(key, &picture))
        return picture;
    picture = QPixmap(pixels);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    QSvgRenderer(svg_).render(&painter);
    painter.end();
    picture.setDevicePixelRatio(ratio);
    QPixmapCache::insert(key, picture);
    return picture;
}

QSize SvgPicture::SizeIn(const QSize& room) const
{
    if (!ownSize_->isValid())
        *ownSize_ = QSvgRenderer(svg_).defaultSize();
    return ownSize_->scaled(room, Qt::KeepAspectRatio);
}

}  // namespace kelvora
