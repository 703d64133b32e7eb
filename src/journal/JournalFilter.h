// Which entries of the journal somebody wants to see.
#pragma once

#include <string>
#include <string_view>

#include "journal/JournalEntry.h"

namespace kelvora {

struct JournalFilter {
    std::string since{};      ///< as IsJournalDate; empty for all
    std::string name{};       ///< the terminal's, in letters of any case; empty for all
    bool failedOnly = false;  ///< see JournalEntry::IsFailure
};

bool Matches(const JournalEntry& entry, const JournalFilter& filter);

/// Whether it is a day, "2026-03-09", or a time on one, "2026-03-09 07:05" or with seconds.
bool IsJournalDate(std::string_view text);

/// "2026-03-09 07:05:00": the time on the clock of the machine that wrote it.
std::string ShownTime(const JournalEntry& entry);

}  // namespace kelvora
