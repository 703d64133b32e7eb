// The operation that runs on a device, one at a time for all windows: while it runs everything else waits for
// its end, its texts stand in the status bar, and the user can ask it to stop.
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "comms/LineWork.h"

namespace kelvora {

/// "1:05", in minutes and seconds.
std::string TimeLeft(std::chrono::seconds left);

class RunningOperation {
public:
    /// Called when an operation has begun, asks, has its answer, or has ended, and as it goes on. They may be
    /// empty.
    std::function<void()> onChange;
    std::function<void(const LineProgress&)> onProgress;

    bool IsBusy() const { return busy_; }

    /// It works: it does not wait for the user's answer to a question.
    bool IsWorking() const { return busy_ && !asking_; }

    /// The user has asked it to stop.
    bool IsStopAsked() const { return stopAsked_; }
    void AskToStop() { stopAsked_ = true; }

    /// What the status bar says of it: two texts, empty while none runs.
    const std::string& Status() const { return status_; }
    const std::string& Name() const { return name_; }

    /// From now on the status bar says that it stops.
    void SayStopping(std::string text);

    /// Takes all devices for a window of its own, which shows its work itself, with no stop asked for, and
    /// gives them back. Nobody is called.
    void Take(std::string status);
    void GiveBack();

    /// Forgets that a stop was asked for, before work of a window of its own that may find nothing to take.
    void GoOn() { stopAsked_ = false; }

private:
    friend class LineOperation;
    friend class OperationQuestion;

    void Tell() const;

    bool busy_ = false;
    bool asking_ = false;
    bool stopAsked_ = false;
    std::string status_;
    std::string name_;
};

/// An operation on a line; it runs for as long as this lives.
class LineOperation {
public:
    /// Begins it, with no stop asked for. No other may run.
    LineOperation(RunningOperation& running, std::string status, std::string name);
    ~LineOperation();
    LineOperation(const LineOperation&) = delete;
    LineOperation& operator=(const LineOperation&) = delete;

    /// For the drivers: the user's wish to stop, and the operation's progress.
    LineHooks Hooks() const;

private:
    RunningOperation& running_;
};

/// While it lives the running operation waits for the user's answer: nothing can be stopped and nothing looks
/// at work.
class OperationQuestion {
public:
    explicit OperationQuestion(RunningOperation& running);
    ~OperationQuestion();
    OperationQuestion(const OperationQuestion&) = delete;
    OperationQuestion& operator=(const OperationQuestion&) = delete;

private:
    RunningOperation& running_;
};

}  // namespace kelvora
