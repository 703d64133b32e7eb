#include "platform/qt/ChoiceMarks.h"

#include "platform/qt/Contrast.h"

namespace kelvora {

namespace {

constexpr float TintOpacity = 0.12F;

/// A sign shall have 3, and its softened edges take some.
constexpr double FaintContrast = 3.2;

}  // namespace

QPen ChosenFrame(const QPalette& palette, bool hasKeys)
{
    const QColor full = palette.color(QPalette::Highlight);
    return {hasKeys ? full : Standing(full, palette.color(QPalette::Base), FaintContrast),
            double(ChosenFrameWidth)};
}

QColor HoverTint(const QPalette& palette)
{
    QColor tint = palette.color(QPalette::Highlight);
    tint.setAlphaF(TintOpacity);
    return tint;
}

}  // namespace kelvora
