// What a series tells while it works: one thing after the other, each on one line.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "journal/JournalEntry.h"

namespace kelvora {

/// Tills of a series by what came of them.
struct SeriesCounts {
    int done = 0;  ///< written
    int same = 0;  ///< held the setup already
    int failed = 0;
    int stopped = 0;  ///< by the user, while they were worked on

    int All() const { return done + same + failed + stopped; }
    friend bool operator==(const SeriesCounts&, const SeriesCounts&) = default;
};

/// Texts are UTF-8.
struct SeriesEvent {
    enum class Kind {
        Waiting,   ///< for a terminal
        NoPort,    ///< the port is not there, see `message`; it is tried again and again
        Found,     ///< a terminal, see `terminal`
        Progress,  ///< see `done`, `total`
        Result,    ///< a till has its verdict, see `entry` and `changes`
        Gone,      ///< the till with the verdict has been taken away
        Warning,   ///< see `message`; the work goes on
        End,       ///< see `counts`
        Last = End,
    };

    Kind kind = Kind::Waiting;
    int line = 1;  ///< 1 to 4
    std::string terminal{};
    std::string message{};  ///< in English
    std::size_t done = 0;   ///< bytes
    std::size_t total = 0;
    JournalEntry entry{};                ///< as the journal keeps it
    std::vector<std::string> changes{};  ///< what the download changed, a line each
    SeriesCounts counts{};

    friend bool operator==(const SeriesEvent&, const SeriesEvent&) = default;
};

/// An object on one line, with its end. A result has all of its entry's names.
std::string SeriesLine(const SeriesEvent& event);

/// False for a line that is no event; `event` is left then.
bool ReadSeriesLine(const std::string& line, SeriesEvent& event);

}  // namespace kelvora
