#include "layout/forms/SheetForms.h"

#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QScreen>

#include "picture/SetupSheet.h"
#include "picture/SheetExport.h"
#include "picture/forms/SheetPrinter.h"
#include "picture/qt/PictureFiles.h"
#include "platform/AsciiCase.h"
#include "platform/Encoding.h"
#include "platform/LocalTime.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

/// Room for all buttons of Qt's preview.
constexpr int PreviewWidth = 860;

std::string Convert(PictureType type, const std::string& svg)
{
    switch (type) {
        case PictureType::Png:
            return PngOf(svg);
        case PictureType::Pdf:
            return PdfOf({&svg, 1});
        case PictureType::Svg:
            break;
    }
    return svg;
}

}  // namespace

std::string SheetForms::Sheet() const
{
    return SetupSheet(session_.document,
                      {Utf8FromPath(session_.settings.Name), Utf8FromPath(session_.File().path),
                       SheetDate(LocalTime()), isChanged()},
                      session_.Desk().Catalogue());
}

void SheetForms::Print()
{
    ChoosePrinter(
        *window_.window(), PathToQString(session_.settings.Name), [this] { return std::vector{Sheet()}; },
        session_.Desk().files);
}

void SheetForms::Preview()
{
    QPrinter printer(QPrinter::HighResolution);
    PrepareForSheets(printer, PathToQString(session_.settings.Name));
    QPrintPreviewDialog dialog(&printer, window_.window());
    dialog.setObjectName(QStringLiteral("PrintPreview"));
    dialog.setWindowFlag(Qt::WindowMaximizeButtonHint);
    const std::string sheet = Sheet();
    bool isDrawn = true;
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog, [&](QPrinter* paper) {
        isDrawn = PrintSheets(*paper, {&sheet, 1}, session_.Desk().files);
    });
    const QSize available = dialog.screen()->availableSize();
    dialog.resize(QSize(PreviewWidth, available.height()).boundedTo(available * 9 / 10));
    dialog.exec();
    if (!isDrawn)
        session_.Desk().Words().Show(Message::NotPrinted, {BoxIcon::Exclamation});
}

void SheetForms::Export()
{
    // Beside the setup itself, where it has a file.
    const std::string& path = session_.File().path;
    const std::string folder =
        path.empty() ? session_.settings.OutInitDir : path.substr(0, path.rfind('/') + 1);
    ExportSheet(session_.Desk().files, {Sheet(), folder, LowerCase(session_.settings.Name)}, Convert);
}

}  // namespace kelvora
