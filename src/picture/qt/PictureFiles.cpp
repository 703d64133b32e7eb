#include "picture/qt/PictureFiles.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgRenderer>
#include <algorithm>

#include "picture/qt/SvgTexts.h"

namespace kelvora {

namespace {

/// Of the unit of the core's drawings, the twip.
constexpr int TwipsPerInch = 1440;

QByteArray Bytes(const std::string& text)
{
    return {text.data(), static_cast<qsizetype>(text.size())};
}

}  // namespace

std::string PngOf(const std::string& svg, int dpi)
{
    QSvgRenderer renderer(Bytes(svg));
    if (!renderer.isValid())
        return {};
    const QSizeF size = renderer.viewBoxF().size() * dpi / TwipsPerInch;
    QImage picture(size.toSize(), QImage::Format_ARGB32_Premultiplied);
    if (picture.isNull())
        return {};
    const double dotsPerMetre = dpi / 0.0254;
    picture.setDotsPerMeterX(qRound(dotsPerMetre));
    picture.setDotsPerMeterY(qRound(dotsPerMetre));
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    renderer.render(&painter);
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    return picture.save(&buffer, "PNG") ? bytes.toStdString() : std::string();
}

bool PaintPages(std::span<const std::string> pages, QPagedPaintDevice& device)
{
    QPainter painter;
    for (const std::string& page : pages) {
        const auto parts = TakeTextsOut(Bytes(page));
        QSvgRenderer shapes;
        if (!parts || !shapes.load(parts->shapes))
            return false;
        if (!(painter.isActive() ? device.newPage() : painter.begin(&device)))
            return false;
        // As large as the paper has room for, in the middle across.
        const QRectF drawing = shapes.viewBoxF();
        const QRectF paper = painter.viewport();
        const double scale = std::min(paper.width() / drawing.width(), paper.height() / drawing.height());
        painter.save();
        painter.translate(paper.left() + (paper.width() - drawing.width() * scale) / 2, paper.top());
        painter.scale(scale, scale);
        shapes.render(&painter, drawing);
        PaintTexts(parts->texts, painter);
        painter.restore();
    }
    return painter.isActive() && painter.end();
}

std::string PdfOf(std::span<const std::string> pages)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setCreator(QStringLiteral("Kelvora"));
        writer.setResolution(TwipsPerInch);
        writer.setPageLayout({QPageSize(QPageSize::A4), QPageLayout::Portrait, {}});
        if (!PaintPages(pages, writer))
            return {};
    }
    return bytes.toStdString();
}

}  // namespace kelvora
