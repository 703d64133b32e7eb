// One piece of work on a line: commands one after the other, each with its checked reply, until they are
// done, one of them fails, or the user wants a stop, which is asked for before each command.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "comms/Comms.h"

namespace kelvora {

struct LineProgress {
    std::size_t done = 0;                      ///< bytes
    std::size_t total = 0;                     ///< bytes; more than 0
    std::optional<std::chrono::seconds> left;  ///< as far as it can be told
};

/// How the work reaches its user. Either may be empty.
struct LineHooks {
    std::function<bool()> stopRequested;
    std::function<void(const LineProgress&)> progress;
};

/// The user has stopped the work.
class LineStopped : public std::runtime_error {
public:
    LineStopped() : std::runtime_error("stopped by the user") {}
};

class LineWork {
public:
    /// `timeout` is how long one reply is waited for, in milliseconds; 0 for longer than the control takes to
    /// give up at the line's speed. The line is open.
    LineWork(Comms& comms, int line, LineHooks hooks, int timeout = 0);

    /// Sends a command and returns its reply's fields, the status first. Throws ReplyError for a failure and
    /// for a reply without a status; LineStopped.
    std::vector<std::string> Exchange(std::string_view command);

    /// The same; also throws ReplyError for a status other than "0" and for another number of fields.
    std::vector<std::string> Ask(std::string_view command, std::size_t fieldCount);

    /// The same with any number of fields between the two.
    std::vector<std::string> Ask(std::string_view command, std::size_t fewest, std::size_t most);

    /// Throws LineStopped when the user wants a stop.
    void CheckStop() const;

    /// From now on no stop is asked for.
    void DisallowStop() { hooks_.stopRequested = nullptr; }

    void Tell(const LineProgress& progress) const;
    EventLoop::Time Now() const { return comms_.Loop().Now(); }

private:
    Comms& comms_;
    int line_;
    LineHooks hooks_;
    int timeout_;
};

}  // namespace kelvora
