// A drawing of the core on the screen, sharp at every size and scaling. Windows that show the same one share
// its pixels.
#pragma once

#include <QByteArray>
#include <QPixmap>
#include <QString>
#include <memory>

namespace kelvora {

class SvgPicture {
public:
    SvgPicture() = default;

    /// `svg` is an SVG document, or empty.
    explicit SvgPicture(QByteArray svg);

    bool IsEmpty() const { return svg_.isEmpty(); }
    const QByteArray& Svg() const { return svg_; }

    /// The drawing stretched to that size, in pixels at a ratio of 1. Drawn when it is first asked for.
    QPixmap Pixels(const QSize& size, qreal ratio) const;

    /// The largest size of the drawing's own form within `room`. Read when it is first asked for.
    QSize SizeIn(const QSize& room) const;

private:
    QByteArray svg_;
    QString cacheKey_;                                            ///< of the drawing, without a size
    std::shared_ptr<QSize> ownSize_ = std::make_shared<QSize>();  ///< of all copies
};

}  // namespace kelvora
