// One piece of work on a line: commands one after the other, each with its checked reply, until they are
// done, one of them fails, or the user wants a stop, which cuts the present wait short. What follows then is
// told in comms/LineEnd.h.
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

/// In percent.
inline constexpr int FullProgress = 100;

struct LineProgress {
    std::size_t done = 0;                        ///< bytes
    std::size_t total = 0;                       ///< bytes; more than 0
    std::optional<std::chrono::seconds> left{};  ///< as far as it can be told

    int Percent() const { return static_cast<int>(done * FullProgress / total); }
};

/// How the work reaches its user. Each may be empty.
struct LineHooks {
    /// Asked ten times a second while a reply is waited for.
    std::function<bool()> stopRequested;
    std::function<void(const LineProgress&)> progress;
    /// The line's device map has come, which is not empty; what the devices hold is read from then on.
    std::function<void(const std::string& deviceMap)> mapRead{};
};

/// The user has stopped the work.
class LineStopped : public std::runtime_error {
public:
    LineStopped() : std::runtime_error("stopped by the user") {}
};

/// What the terminal has still to be told before the line is closed, in this order.
struct LineDebts {
    bool release = false;        ///< it was told to hold the line, and has not answered a release
    bool endOfTransfer = false;  ///< that the transfer of the flash is over; only when all has gone well
    std::optional<char> mode{};  ///< the connection mode in which it is to be left, however the work ends
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

    /// Does `work` without hearing a stop; one that comes meanwhile is heard after it.
    void Unstoppably(const std::function<void()>& work);

    /// From now on no stop is heard, commands are sent twice at the most, or once to a terminal that has not
    /// answered since the line was opened, and all of them together take a second for each send and the time
    /// of the longest frame.
    void Hurry();

    /// Whether no whole answer has come since the last command was sent.
    bool IsUnanswered() const { return channel_.Answers() == answersBefore_; }

    LineDebts& Debts() { return debts_; }

    void Tell(const LineProgress& progress) const;
    EventLoop::Time Now() const { return comms_.Loop().Now(); }

private:
    bool WantsStop() const;
    std::string WaitFor(std::string_view name);
    int WaitTime() const;

    Comms& comms_;
    int line_;
    LnkControl& channel_;
    LineHooks hooks_;
    int timeout_;
    int mostSends_ = LnkControl::UsualSends;
    std::optional<EventLoop::Time> endsBy_;  ///< of what is in a hurry
    bool hearsStop_ = true;
    std::size_t answersBefore_ = 0;  ///< to earlier commands
    LineDebts debts_;
};

}  // namespace kelvora
