// How the program's controls look and how large they are: the desktop's style, with borders that can be seen,
// and large enough for fingers where that is wanted.
#pragma once

#include <QProxyStyle>

namespace kelvora {

/// How wide and how high a target is at least that fingers find, in pixels.
inline constexpr int TouchTarget = 40;

class ProgramStyle final : public QProxyStyle {
public:
    /// `forTouch`: all that is pressed is a touch target.
    explicit ProgramStyle(bool forTouch);

    /// The least side of what a window draws itself to be pressed: `least`, or a touch target.
    static int LeastTarget(const QWidget& widget, int least);

    using QProxyStyle::polish;
    /// Colours of a desktop in which some texts could hardly be read.
    void polish(QPalette& palette) override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;

private:
    bool forTouch_;
};

}  // namespace kelvora
