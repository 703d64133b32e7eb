// The texts of a drawing apart from its shapes. Qt SVG draws letters as outlines: on paper they make a file
// ten times as large, in which nothing can be searched or copied. Set as text they are letters of a font.
#pragma once

#include <QByteArray>
#include <QColor>
#include <QPainter>
#include <QPointF>
#include <QString>
#include <optional>
#include <vector>

namespace kelvora {

/// One line of text, in the drawing's own unit.
struct SvgText {
    QPointF place;  ///< on its base line
    double size = 0;
    QColor colour;
    bool bold = false;
    QString anchor;  ///< as SVG names it
    QString text;
};

struct SvgParts {
    QByteArray shapes;  ///< the drawing without its texts
    std::vector<SvgText> texts;
};

/// Takes a drawing of the core apart: its texts are plain elements, moved by groups at most. Nothing for what
/// is no XML document.
std::optional<SvgParts> TakeTextsOut(const QByteArray& svg);

/// Sets the texts; the painter's unit is the drawing's.
void PaintTexts(const std::vector<SvgText>& texts, QPainter& painter);

}  // namespace kelvora
