// Sheets on paper, by the desktop's print dialog. They bring their own margins.
#pragma once

#include <QString>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "catalogue/UserFiles.h"

class QPrinter;
class QWidget;

namespace kelvora {

/// Upright A4 without margins. `name` stands in the printer's queue.
void PrepareForSheets(QPrinter& printer, const QString& name);

/// Prints sheets, one a page, or writes the file that was chosen in place of a printer: like every file of
/// the program, whole or not at all, and told in a message box when it cannot be written. False when nothing
/// was drawn.
bool PrintSheets(QPrinter& printer, std::span<const std::string> sheets, const UserFiles& files);

/// Asks for a printer, above `window`, and prints on it what `sheets` then gives. What went wrong is told.
void ChoosePrinter(QWidget& window, const QString& name,
                   const std::function<std::vector<std::string>()>& sheets, const UserFiles& files);

}  // namespace kelvora
