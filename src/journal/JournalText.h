// The journal's text: a JSON object a line for each entry. Lines that are none, such as one that a cut of the
// power has torn, cost nothing but themselves.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/MessageCatalogue.h"
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

/// Adds the entries of a text of lines.
void TakeJournalText(JournalContent& content, std::string_view text);

/// "done", "same", ...: how the text names a result.
const char* ResultName(JournalEntry::Result result);

/// "done", "held it already", ...: the same in the catalogue's language.
std::string ResultText(const MessageCatalogue& catalogue, JournalEntry::Result result);

}  // namespace kelvora
