#include "layout/forms/SheetForms.h"

#include <QPaintEngine>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QScreen>

#include "picture/SetupSheet.h"
#include "picture/SheetExport.h"
#include "picture/qt/PictureFiles.h"
#include "platform/AsciiCase.h"
#include "platform/Encoding.h"
#include "platform/LocalTime.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

/// Room for all buttons of Qt's preview.
constexpr int PreviewWidth = 860;

// The sheet brings its own margins.
void Prepare(QPrinter& printer, const std::string& name)
{
    printer.setDocName(PathToQString(name));
    printer.setCreator(QStringLiteral("Kelvora"));
    printer.setPageLayout({QPageSize(QPageSize::A4), QPageLayout::Portrait, {}});
    printer.setFullPage(true);
}

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

// Prints, or writes the file that was chosen in place of a printer: like every file of the program, whole or
// not at all, and told here when it cannot be written. False where nothing was drawn.
bool SheetForms::PrintOn(QPrinter& printer, const std::string& sheet) const
{
    const QPaintEngine* const engine = printer.paintEngine();
    if (printer.outputFileName().isEmpty() || !engine || engine->type() != QPaintEngine::Pdf)
        return PaintPages({&sheet, 1}, printer);
    const std::string document = PdfOf({&sheet, 1});
    if (!document.empty())
        session_.Desk().files.Write(PathFromQString(printer.outputFileName()), document);
    return !document.empty();
}

std::string SheetForms::Sheet() const
{
    return SetupSheet(session_.document,
                      {Utf8FromPath(session_.settings.Name), Utf8FromPath(session_.File().path),
                       SheetDate(LocalTime()), isChanged()},
                      session_.Desk().Catalogue());
}

void SheetForms::Print()
{
    QPrinter printer(QPrinter::HighResolution);
    Prepare(printer, session_.settings.Name);
    QPrintDialog dialog(&printer, window_.window());
    dialog.setObjectName(QStringLiteral("Print"));
    if (dialog.exec() != QDialog::Accepted)
        return;
    const std::string sheet = Sheet();
    if (!PrintOn(printer, sheet))
        session_.Desk().Words().Show(Message::NotPrinted, {BoxIcon::Exclamation});
}

void SheetForms::Preview()
{
    QPrinter printer(QPrinter::HighResolution);
    Prepare(printer, session_.settings.Name);
    QPrintPreviewDialog dialog(&printer, window_.window());
    dialog.setObjectName(QStringLiteral("PrintPreview"));
    dialog.setWindowFlag(Qt::WindowMaximizeButtonHint);
    const std::string sheet = Sheet();
    bool isPrinted = true;
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                     [&](QPrinter* paper) { isPrinted = PrintOn(*paper, sheet); });
    const QSize available = dialog.screen()->availableSize();
    dialog.resize(QSize(PreviewWidth, available.height()).boundedTo(available * 9 / 10));
    dialog.exec();
    if (!isPrinted)
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
