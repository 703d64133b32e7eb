// A line of text below the devices of a strip: each text in the middle under its own device, shortened where
// it would run into the next one.
#pragma once

#include <QPainter>
#include <QRect>
#include <QString>
#include <vector>

namespace kelvora {

struct StripLabel {
    QRect device;
    QString text;
    bool isBold = false;
};

/// Draws them from left to right, which is their order, with the painter's font and pen.
void PaintLabels(QPainter& painter, const std::vector<StripLabel>& labels, int top);

}  // namespace kelvora
