#include "picture/qt/SvgTexts.h"

#include <QFontMetricsF>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace kelvora {

namespace {

// "translate(10 -20)", as SvgDrawing writes it.
QPointF MoveOf(const QXmlStreamAttributes& attributes)
{
    const QString transform = attributes.value(QLatin1String("transform")).toString();
    const QStringList numbers =
        transform.mid(transform.indexOf('(') + 1).chopped(transform.isEmpty() ? 0 : 1).split(' ');
    return numbers.size() == 2 ? QPointF(numbers[0].toDouble(), numbers[1].toDouble()) : QPointF();
}

SvgText ReadText(QXmlStreamReader& reader, const QPointF& move)
{
    const QXmlStreamAttributes attributes = reader.attributes();
    const auto number = [&](const char* name) { return attributes.value(QLatin1String(name)).toDouble(); };
    SvgText text;
    text.place = move + QPointF(number("x"), number("y"));
    text.size = number("font-size");
    text.colour = QColor(attributes.value(QLatin1String("fill")).toString());
    text.bold = attributes.value(QLatin1String("font-weight")) == QLatin1String("bold");
    text.anchor = attributes.value(QLatin1String("text-anchor")).toString();
    text.text = reader.readElementText();
    return text;
}

// The part of a line's width that stands before its anchor.
double ShareBefore(const QString& anchor)
{
    if (anchor == QLatin1String("middle"))
        return 0.5;
    return anchor == QLatin1String("end") ? 1 : 0;
}

}  // namespace

std::optional<SvgParts> TakeTextsOut(const QByteArray& svg)
{
    SvgParts parts;
    QXmlStreamReader reader(svg);
    QXmlStreamWriter writer(&parts.shapes);
    std::vector<QPointF> moves{{}};
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement() && reader.name() == QLatin1String("text")) {
            parts.texts.push_back(ReadText(reader, moves.back()));
            continue;
        }
        if (reader.isStartElement())
            moves.push_back(moves.back() + MoveOf(reader.attributes()));
        else if (reader.isEndElement())
            moves.pop_back();
        if (reader.tokenType() != QXmlStreamReader::Invalid)
            writer.writeCurrentToken(reader);
    }
    return reader.hasError() ? std::nullopt : std::optional(std::move(parts));
}

void PaintTexts(const std::vector<SvgText>& texts, QPainter& painter)
{
    for (const SvgText& text : texts) {
        QFont font(QStringLiteral("sans-serif"));
        font.setPixelSize(qRound(text.size));
        font.setBold(text.bold);
        // Lengths do not depend on the device: what was centred on the screen is so on paper.
        font.setHintingPreference(QFont::PreferNoHinting);
        const double before = ShareBefore(text.anchor) * QFontMetricsF(font).horizontalAdvance(text.text);
        painter.setFont(font);
        painter.setPen(text.colour);
        painter.drawText(text.place - QPointF(before, 0), text.text);
    }
}

}  // namespace kelvora
