// The journal's text: a JSON object a line for each entry. Lines that are none, such as one that a cut of the
// power has torn, cost nothing but themselves.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "journal/JournalEntry.h"

namespace kelvora {

/// One line, with its end.
std::string JournalLine(const JournalEntry& entry);

/// Nothing for a line that is no entry. Names that are not known are skipped.
std::optional<JournalEntry> ReadJournalLine(std::string_view line);

struct JournalContent {
    std::vector<JournalEntry> entries;  ///< in their order
    std::size_t damaged = 0;            ///< lines that are none
};

/// The texts, in their order, on as many cores as there are.
JournalContent ReadJournalTexts(const std::vector<std::string>& texts);

/// "done", "same", ...: how the text names a result.
const char* ResultName(JournalEntry::Result result);

}  // namespace kelvora
