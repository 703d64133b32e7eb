// What came of a series, for other programs and for paper.
#pragma once

#include <string>
#include <vector>

#include "catalogue/MessageCatalogue.h"
#include "series/SeriesEvent.h"

namespace kelvora {

/// The results, in their order.
using SeriesResults = std::vector<SeriesEvent>;

SeriesCounts CountsOf(const SeriesResults& results);

/// A table with a heading line, as RFC 4180 has it, in UTF-8. Its words are English, like those of the JSON.
std::string ReportCsv(const SeriesResults& results);

/// An array of the results as the command prints them.
std::string ReportJson(const SeriesResults& results);

/// What is printed: SVG documents of A4 pages. `date` is when the report is made.
std::vector<std::string> ReportSheets(const SeriesResults& results, const std::string& date,
                                      const MessageCatalogue& catalogue);

}  // namespace kelvora
