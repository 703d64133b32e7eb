// A simulated line that kelvora-bench plays behind a pseudo-terminal, and the file that keeps its memory.
#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "bench/StateText.h"
#include "bench/posix/PtyLine.h"
#include "bench/posix/StateLock.h"

namespace kelvora::bench {

class PlayedLine {
public:
    /// `loop` outlives this. Throws std::system_error.
    PlayedLine(PollLoop& loop, LineState memory, const LineOptions& options);
    PlayedLine(const PlayedLine&) = delete;
    PlayedLine& operator=(const PlayedLine&) = delete;
    ~PlayedLine();

    /// What a program opens.
    const std::string& Path() const { return pty_.Path(); }

    /// Keeps the memory in a file from now on: the terminal's before it answers, that of the modules a little
    /// later. What goes wrong is told on `err`, which outlives this.
    void KeepIn(StateFile file, StateLock lock, std::ostream& err);

    /// Says on `out`, which outlives this, what happens at the line of that number.
    void TellOn(std::ostream& out, std::size_t number);

private:
    struct Keeper {
        StateFile file;
        StateLock lock;
        std::ostream& err;
    };

    bool Save();

    PollLoop& loop_;
    std::optional<Keeper> keeper_;
    Appointment saving_;
    SimulatedLine line_;
    PtyLine pty_;
};

}  // namespace kelvora::bench
