// Draws the icons at build time, in a size in which the windows show them: to read and draw them as SVG is
// most of what they cost a start.
//   kelvora-icons FOLDER SIDE DRAWING...
// FOLDER/NAME.SIDE holds the square picture twice, as QImage's premultiplied ARGB32 line by line: what the
// drawing calls currentColor is black in the first and white in the second. With any other colour each
// channel lies in between, in proportion.
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QStringList>
#include <QSvgRenderer>
#include <cstdio>
#include <cstdlib>

namespace {

[[noreturn]] void Fail(const QString& path)
{
    std::fprintf(stderr, "kelvora-icons: %s\n", qPrintable(path));
    std::exit(1);
}

QImage Draw(QByteArray drawing, const char* ink, int side, const QString& path)
{
    QSvgRenderer renderer(drawing.replace("currentColor", ink));
    if (!renderer.isValid())
        Fail(path);
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    renderer.render(&painter, QRect(0, 0, side, side));
    return picture;
}

void Convert(const QString& path, int side, const QString& picturesPath)
{
    QFile from(path);
    QFile to(picturesPath);
    if (!from.open(QIODevice::ReadOnly))
        Fail(path);
    const QByteArray drawing = from.readAll();
    QByteArray pictures;
    for (const char* const ink : {"#000000", "#ffffff"}) {
        const QImage picture = Draw(drawing, ink, side, path);
        pictures.append(reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes());
    }
    if (!to.open(QIODevice::WriteOnly) || to.write(pictures) != pictures.size() || !to.flush())
        Fail(picturesPath);
}

}  // namespace

int main(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QFile::decodeName(argv[i]);
    const int side = arguments.value(1).toInt();
    if (arguments.size() < 3 || side <= 0)
        Fail(QStringLiteral("FOLDER SIDE DRAWING..."));
    for (const QString& drawing : arguments.mid(2))
        Convert(drawing, side,
                QStringLiteral("%1/%2.%3").arg(arguments[0], QFileInfo(drawing).baseName()).arg(side));
}
