// The journal as those who work on a device use it: an entry is begun, filled, and kept when the work is
// over. A journal that cannot be kept stops nothing: it is told, and the work goes on.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

#include "journal/JournalText.h"

namespace kelvora {

/// Where the journal's lines are kept.
class JournalStore {
public:
    virtual ~JournalStore() = default;

    /// Adds a line, which brings its end along: whole and safe on the disk, or not at all. Throws FileError.
    virtual void Append(const std::string& line) = 0;

    /// Called with a text of whole lines.
    using Reader = std::function<void(std::string_view text)>;

    /// Hands over all that was kept, the oldest first: one text after the other, for together they may be
    /// large. Throws FileError.
    virtual void Read(const Reader& take) const = 0;
};

/// All of it. Throws FileError.
JournalContent ReadJournal(const JournalStore& store);

/// Who writes: the same in all entries of a run.
struct JournalOrigin {
    std::string who;
    std::string program;
    std::string version;
};

class Journal {
public:
    using Clock = std::function<std::chrono::system_clock::time_point()>;
    using Hash = std::function<std::string(std::string_view)>;

    /// `store` outlives the object; `sha256` gives a text's hash in small hexadecimal digits.
    Journal(JournalStore& store, JournalOrigin origin, Hash sha256,
            Clock clock = std::chrono::system_clock::now);

    /// An operation that begins now.
    struct Begun {
        JournalEntry entry;
        std::chrono::system_clock::time_point start;
    };
    Begun Begin(std::string operation, int line) const;

    /// It ends now: keeps its entry, which gets to know how long it took. Throws FileError.
    void End(Begun& begun) const;

    std::string Sha256(std::string_view text) const { return sha256_(text); }

    /// Throws FileError.
    JournalContent Read() const { return ReadJournal(store_); }

private:
    JournalStore& store_;
    JournalOrigin origin_;
    Hash sha256_;
    Clock clock_;
};

}  // namespace kelvora
