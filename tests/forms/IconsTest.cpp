// The icons that were drawn at build time against their drawings.
#include <gtest/gtest.h>

#include <QSvgRenderer>
#include <QtWidgets>
#include <algorithm>

#include "windows/forms/Icons.h"

namespace kelvora {

namespace {

constexpr int Rounding = 2;

QImage DrawingOf(const QString& name, int side, const QColor& colour)
{
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    QSvgRenderer(file.readAll().replace("currentColor", colour.name().toLatin1())).render(&painter);
    return picture;
}

QImage Shown(const QIcon& icon, int side, QIcon::Mode mode)
{
    return icon.pixmap({side, side}, 1, mode).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

// The most that a channel of a pixel differs, of 255; 255 for pictures that cannot be compared.
int Difference(const QImage& one, const QImage& other)
{
    if (one.isNull() || one.size() != other.size() || one.format() != other.format())
        return 255;
    int most = 0;
    for (qsizetype i = 0; i < one.sizeInBytes(); ++i)
        most = std::max(most, std::abs(one.constBits()[i] - other.constBits()[i]));
    return most;
}

TEST(Icons, AreTheirDrawingsInThePalettesColours)
{
    const QPalette before = QApplication::palette();
    const QStringList drawings = QDir(QStringLiteral(":/icons")).entryList({QStringLiteral("*.svg")});
    ASSERT_FALSE(drawings.isEmpty());
    for (const QColor& colour : {QColor(0x20, 0x40, 0x60), QColor(0xF5, 0xE0, 0xFF)}) {
        QPalette palette = before;
        palette.setColor(QPalette::ButtonText, colour);
        palette.setColor(QPalette::HighlightedText, QColor(Qt::red));
        QApplication::setPalette(palette);
        for (const QString& drawing : drawings) {
            const QString name = drawing.chopped(4);
            const QIcon icon = name == QLatin1String("kelvora") ? ProgramIcon() : ThemedIcon(name);
            // 16 or 24, and the like, are drawn at build time; 20 and 30 are not.
            for (const int side : {16, 20, 24, 30, 32, 36, 48, 64})
                for (const auto& [mode, shown] :
                     {std::pair(QIcon::Normal, colour), {QIcon::Selected, Qt::red}})
                    EXPECT_LE(Difference(Shown(icon, side, mode), DrawingOf(name, side, shown)), Rounding)
                        << qPrintable(name) << ' ' << side;
        }
    }
    QApplication::setPalette(before);
}

}  // namespace

}  // namespace kelvora
