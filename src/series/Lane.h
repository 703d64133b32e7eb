// One line of a series as somebody sees it who looks on: what it waits for or does, and the last verdict.
#pragma once

#include <string>

#include "series/SeriesEvent.h"

namespace kelvora {

class Lane {
public:
    enum class State {
        Idle,  ///< nothing runs
        Waiting,
        NoPort,
        Working,
        Done,
        Same,
        Failed,
        Stopped,
        Ended,  ///< by itself, see Message
        Last = Ended,
    };

    /// The series is started on this line.
    void Begin();
    void Take(const SeriesEvent& event);
    /// Its program has ended; `failure` says why when that was not meant to be.
    void End(const std::string& failure);

    /// What is shown large. A failure stays, also while the next till is waited for, until that one comes.
    State Now() const { return state_; }
    bool IsRunning() const { return isRunning_; }
    /// Whether a till is worked on: a stop waits for its end.
    bool IsWorking() const { return state_ == State::Working; }
    /// Whether the till of the verdict is away, and the next one can be connected.
    bool IsGone() const { return isGone_; }
    /// Whether the present till, whose work came to nothing, can be tried once more.
    bool CanRetry() const;

    const std::string& Terminal() const { return terminal_; }  ///< of the till at hand
    const std::string& Message() const { return message_; }    ///< why it stands there
    /// What its program could not do besides, such as to keep the journal; of the last till that it was so.
    const std::string& Warning() const { return warning_; }
    int Percent() const { return percent_; }  ///< while it works; below 0 for not known

    /// The last till's verdict and name; Idle for none yet.
    State LastVerdict() const { return lastVerdict_; }
    const std::string& LastTerminal() const { return lastTerminal_; }

private:
    void Judge(const SeriesEvent& event);

    State state_ = State::Idle;
    bool isRunning_ = false;
    bool isGone_ = true;
    std::string terminal_;
    std::string message_;
    std::string warning_;
    int percent_ = -1;
    State lastVerdict_ = State::Idle;
    std::string lastTerminal_;
};

/// Whether it is a verdict of a till that now holds its setup.
constexpr bool IsPass(Lane::State state)
{
    return state == Lane::State::Done || state == Lane::State::Same;
}

}  // namespace kelvora
