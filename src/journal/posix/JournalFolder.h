// The journal's files in a folder: "journal.jsonl", which is written, and those that were full before it,
// "journal-00001.jsonl" and so on. Programs that write at the same time take turns by a lock on the file.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include "journal/Journal.h"
#include "platform/Files.h"

namespace kelvora {

class JournalFolder final : public JournalStore {
public:
    /// How large a file may be before the next one is begun.
    static constexpr std::size_t FileLimit = 10'000'000;

    /// How long another program may keep the file: one that was halted in a line must not halt the others.
    static constexpr std::chrono::milliseconds Patience{2000};

    /// `folder` is made when there is none. `files` outlives the object.
    JournalFolder(Files& files, std::string folder, std::size_t fileLimit = FileLimit,
                  std::chrono::milliseconds patience = Patience);

    void Append(const std::string& line) override;
    void Read(const Reader& take) const override;

    /// The file that is written.
    std::string Path() const { return folder_ + "/journal.jsonl"; }

private:
    std::vector<std::string> FullFiles() const;
    bool TryAppend(const std::string& line);
    void BeginNextFile();

    Files& files_;
    std::string folder_;
    std::size_t fileLimit_;
    std::chrono::milliseconds patience_;
};

/// The name of this user's account.
std::string AccountName();

}  // namespace kelvora
