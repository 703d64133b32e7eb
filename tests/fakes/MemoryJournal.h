// A journal in memory, of the user "anna" with version 1.2.3, at a time that the test sets.
#pragma once

#include <string>
#include <vector>

#include "journal/Journal.h"
#include "platform/Files.h"

namespace kelvora {

class MemoryJournal final : public JournalStore {
public:
    void Append(const std::string& line) override
    {
        if (!failure.empty())
            throw FileError("journal.jsonl", failure);
        text += line;
    }
    void Read(const Reader& take) const override { take(text); }

    std::vector<JournalEntry> Entries() const { return ReadJournal(*this).entries; }
    JournalEntry Last() const { return Entries().back(); }

    std::string text;
    std::string failure;  ///< the system's words when nothing can be kept
    std::chrono::system_clock::time_point now{};
    Journal journal{*this,
                    {"anna", "kelvora", "1.2.3"},
                    [](std::string_view content) { return "hash of " + std::to_string(content.size()); },
                    [this] { return now; }};
};

}  // namespace kelvora
