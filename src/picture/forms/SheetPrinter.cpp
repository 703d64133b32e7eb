#include "picture/forms/SheetPrinter.h"

#include <QPaintEngine>
#include <QPrintDialog>
#include <QPrinter>

#include "picture/qt/PictureFiles.h"
#include "platform/qt/Text.h"

namespace kelvora {

void PrepareForSheets(QPrinter& printer, const QString& name)
{
    printer.setDocName(name);
    printer.setCreator(QStringLiteral("Kelvora"));
    printer.setPageLayout({QPageSize(QPageSize::A4), QPageLayout::Portrait, {}});
    printer.setFullPage(true);
}

bool PrintSheets(QPrinter& printer, std::span<const std::string> sheets, const UserFiles& files)
{
    const QPaintEngine* const engine = printer.paintEngine();
    if (printer.outputFileName().isEmpty() || !engine || engine->type() != QPaintEngine::Pdf)
        return PaintPages(sheets, printer);
    const std::string document = PdfOf(sheets);
    if (!document.empty())
        files.Write(PathFromQString(printer.outputFileName()), document);
    return !document.empty();
}

void ChoosePrinter(QWidget& window, const QString& name,
                   const std::function<std::vector<std::string>()>& sheets, const UserFiles& files)
{
    QPrinter printer(QPrinter::HighResolution);
    PrepareForSheets(printer, name);
    QPrintDialog dialog(&printer, &window);
    dialog.setObjectName(QStringLiteral("Print"));
    if (dialog.exec() == QDialog::Accepted && !PrintSheets(printer, sheets(), files))
        files.Words().Show(Message::NotPrinted, {BoxIcon::Exclamation});
}

}  // namespace kelvora
