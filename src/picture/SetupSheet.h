// A setup on one sheet of paper: a heading, the strip of its modules, and of each module what it is set to
// and its keys with their numbers. Black on white, so that it can be read in grey. Print, preview and export
// show it, and the command "render".
#pragma once

#include <chrono>
#include <string>

#include "catalogue/MessageCatalogue.h"
#include "setup/SetupDocument.h"

namespace kelvora {

/// What stands above a sheet. Texts are UTF-8.
struct SheetHeading {
    std::string name;  ///< the setup's display name
    std::string file;  ///< its path; empty for none
    std::string date;
    bool isChanged = false;  ///< the file does not hold what is shown
    int page = 1;            ///< the sheet's number, told where there are several
    int pages = 1;
};

/// "2026-03-09 07:05".
std::string SheetDate(std::chrono::local_seconds time);

/// The sheet as an SVG document of an A4 page. The keys are drawn as large as the page has room for.
std::string SetupSheet(const SetupDocument& document, const SheetHeading& heading,
                       const MessageCatalogue& catalogue);

}  // namespace kelvora
