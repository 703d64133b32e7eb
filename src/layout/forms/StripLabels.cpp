#include "layout/forms/StripLabels.h"

#include <algorithm>
#include <cstdlib>

namespace kelvora {

namespace {

/// The narrowest module's texts need more room than its button, in pixels.
constexpr int Overhang = 6;

}  // namespace

void PaintLabels(QPainter& painter, const std::vector<StripLabel>& labels, int top)
{
    const QFont font = painter.font();
    const auto fontOf = [&](const StripLabel& label) {
        QFont own = font;
        own.setBold(label.isBold);
        return own;
    };
    const int apart = 2 * painter.fontMetrics().horizontalAdvance(QLatin1Char(' '));
    std::vector<int> widths;
    for (const StripLabel& label : labels) {
        // Rounded down, the width would be too small for the text that it was measured of.
        widths.push_back(std::min(QFontMetrics(fontOf(label)).horizontalAdvance(label.text) + 1,
                                  label.device.width() + Overhang));
        if (widths.size() == 1)
            continue;
        int& right = widths.back();
        int& left = widths.at(widths.size() - 2);
        const int middles = label.device.center().x() - labels.at(widths.size() - 2).device.center().x();
        const int lacks = left + right - 2 * (middles - apart);
        if (lacks <= 0)
            continue;
        // The longer one gives way, and when both are as long, both do.
        int& longer = left > right ? left : right;
        longer -= std::min(lacks, std::abs(left - right));
        const int each = std::max(0, left + right - 2 * (middles - apart)) / 2;
        left = std::max(0, left - each);
        right = std::max(0, right - each);
    }
    for (std::size_t i = 0; i < labels.size(); ++i) {
        painter.setFont(fontOf(labels.at(i)));
        const QFontMetrics metrics = painter.fontMetrics();
        QRect place(0, top, widths.at(i), metrics.height());
        place.moveCenter({labels.at(i).device.center().x(), place.center().y()});
        painter.drawText(place, Qt::AlignCenter | Qt::TextDontClip,
                         metrics.elidedText(labels.at(i).text, Qt::ElideRight, widths.at(i)));
    }
    painter.setFont(font);
}

}  // namespace kelvora
