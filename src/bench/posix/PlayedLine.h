// A simulated line that kelvora-bench plays behind a pseudo-terminal: the till that hangs there, the file
// that keeps its memory, and other tills that take its place.
#pragma once

#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "bench/StateText.h"
#include "bench/TillChanges.h"
#include "bench/posix/PtyLine.h"
#include "bench/posix/StateLock.h"
#include "platform/Files.h"

namespace kelvora::bench {

class PlayedLine {
public:
    /// Without a till. What goes wrong later is told on `err`. References outlive this. Throws
    /// std::system_error.
    PlayedLine(PollLoop& loop, CloseWatch& closes, const LineOptions& options, Files& files,
               std::ostream& err);
    PlayedLine(const PlayedLine&) = delete;
    PlayedLine& operator=(const PlayedLine&) = delete;
    ~PlayedLine();

    /// What a program opens.
    const std::string& Path() const { return pty_.Path(); }

    /// Puts a till there in place of another. The terminal's memory is kept in its file before it answers,
    /// that of the modules a little later. Throws StateError, which names the file, or std::system_error when
    /// that cannot be had; then there is none.
    void Put(const Till& till);
    void TakeAway();

    /// Lets tills come and go from now on.
    void Follow(std::vector<TillEvent> events);

    /// Called with what happens: "held", "released", "gone", "there" and the till's name.
    std::function<void(std::string_view)> onEvent;

private:
    struct Keeper {
        std::string path;  ///< of the file; one that cannot be read is never written
        StateLock lock;
    };

    void Happen(const TillEvent& event);
    bool Save();
    void Tell(std::string_view event);

    PollLoop& loop_;
    Files& files_;
    std::ostream& err_;
    std::optional<Keeper> keeper_;
    Appointment saving_;
    SimulatedLine line_;
    PtyLine pty_;
    std::optional<TillChanges> changes_;
};

}  // namespace kelvora::bench
