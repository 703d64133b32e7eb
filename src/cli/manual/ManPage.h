// Manual pages, in the man macros of roff. Names, synopsis, options and commands come from the command line
// itself; what more there is to say comes from hand-written texts.
#pragma once

#include <string>
#include <string_view>

#include "cli/manual/CommandText.h"

namespace kelvora::manual {

/// Stands in a hand-written text, alone on its line, for the lists of arguments, options and commands.
inline constexpr std::string_view ListsMarker = "@LISTS@\n";

/// What a page has beside what it takes from the command line.
struct PageTexts {
    std::string version;  ///< of the program
    std::string date;     ///< of that version
    std::string body;     ///< roff; where it has no ListsMarker, the lists stand after it
    std::string end;      ///< roff that ends the pages of one program, where the body tells no exit status
};

/// The page of `command` in section 1; those of the commands below it are pages of their own.
std::string ManPage(const CommandText& command, const PageTexts& texts);

/// The name of the command's page: its path, joined by "-".
std::string PageName(const CommandText& command);

}  // namespace kelvora::manual
