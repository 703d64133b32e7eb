// The program's layer over the terminal-link controls: one reply mailbox a line, sending a command, and the
// wait for its reply with a time-out.
//
// A mailbox is the text property of its line's control: lines that end in CR LF, each led by a tag of
// comms/Reply.h. Events append to it; they come while a wait yields to the event loop, and nowhere else.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "comms/CountdownTimer.h"
#include "comms/LnkControl.h"

namespace kelvora {

inline constexpr int LineCount = 4;

class Comms {
public:
    /// How long a wait with time-out 0 lasts, in milliseconds.
    static constexpr int DefaultTimeout = 4000;

    /// The controls of lines 1 to 4, null where there is none; they and the loop outlive the object.
    Comms(EventLoop& loop, const std::array<LnkControl*, LineCount>& channels);
    ~Comms();
    Comms(const Comms&) = delete;
    Comms& operator=(const Comms&) = delete;

    /// The control of line 1 to 4; null for other lines and where there is none.
    LnkControl* Channel(int line) const;

    /// Timer 0 belongs to the main window, timers 1 to 4 are the time-out clocks of the lines.
    CountdownTimer& Clock(int index) { return clocks_.at(static_cast<std::size_t>(index)); }

    /// Clears the line's mailbox and hands the command to its control, which must be there; `mostSends` as in
    /// LnkControl.
    void Send(int line, std::string_view command, int mostSends = LnkControl::UsualSends);

    /// Waits for the reply that begins with `prefix`, or for any line when it is empty, and takes what came
    /// before it out of the mailbox. `timeout` is in milliseconds: 0 for the default, below 0 for no limit.
    /// The result is told in comms/Reply.h; it is empty when `isOver`, which is asked at least ten times a
    /// second as long as there is a limit, has ended the wait.
    std::string WaitReply(int line, std::string_view prefix, int timeout,
                          const std::function<bool()>& isOver = nullptr);

    /// Of all lines; empty before the first.
    const std::string& LastCommand() const { return lastCommand_; }

    EventLoop& Loop() const { return loop_; }

private:
    EventLoop& loop_;
    std::array<LnkControl*, LineCount> channels_;
    std::array<CountdownTimer, LineCount + 1> clocks_;
    std::string lastCommand_;
};

}  // namespace kelvora
