#include "platform/qt/Contrast.h"

#include <algorithm>
#include <cmath>

namespace kelvora {

namespace {

constexpr int MixingSteps = 20;

/// A border stands out of the window by more than 3 to 1, which it shall have with its softened corners too.
constexpr double BorderContrast = 3.6;

double Luminance(const QColor& colour)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

QColor Mix(const QColor& ink, const QColor& ground, double share)
{
    const auto part = [share](int of, int other) {
        return static_cast<int>(std::lround(of * share + other * (1 - share)));
    };
    return {part(ink.red(), ground.red()), part(ink.green(), ground.green()),
            part(ink.blue(), ground.blue())};
}

}  // namespace

double Contrast(const QColor& one, const QColor& other)
{
    const auto [dark, light] = std::minmax({Luminance(one), Luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

QColor Readable(const QColor& ink, const QColor& ground)
{
    const QColor end = Contrast(Qt::black, ground) > Contrast(Qt::white, ground) ? Qt::black : Qt::white;
    for (int step = 0; step < MixingSteps; ++step)
        if (const QColor mixed = Mix(end, ink, double(step) / MixingSteps);
            Contrast(mixed, ground) >= ReadableContrast)
            return mixed;
    return end;
}

QColor Standing(const QColor& ink, const QColor& ground, double least)
{
    for (int step = 1; step < MixingSteps; ++step)
        if (const QColor mixed = Mix(ink, ground, double(step) / MixingSteps);
            Contrast(mixed, ground) >= least)
            return mixed;
    return ink;
}

QColor BorderColour(const QPalette& palette)
{
    return Standing(palette.color(QPalette::WindowText), palette.color(QPalette::Window), BorderContrast);
}

}  // namespace kelvora
