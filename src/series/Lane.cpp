#include "series/Lane.h"

namespace kelvora {

namespace {

using Kind = SeriesEvent::Kind;
using State = Lane::State;

State VerdictOf(JournalEntry::Result result)
{
    switch (result) {
        case JournalEntry::Result::Done:
            return State::Done;
        case JournalEntry::Result::Same:
            return State::Same;
        case JournalEntry::Result::Stopped:
            return State::Stopped;
        default:
            return State::Failed;
    }
}

bool IsFailure(State state)
{
    return state == State::Failed || state == State::Stopped;
}

}  // namespace

void Lane::Begin()
{
    *this = {};
    isRunning_ = true;
    state_ = State::Waiting;
}

void Lane::Take(const SeriesEvent& event)
{
    constexpr int Whole = 100;
    switch (event.kind) {
        case Kind::Waiting:
        case Kind::NoPort:
            // One that failed because it was taken away would never be seen.
            if (IsFailure(state_))
                break;
            state_ = event.kind == Kind::Waiting ? State::Waiting : State::NoPort;
            terminal_.clear();
            message_ = event.message;
            break;
        case Kind::Found:
            state_ = State::Working;
            isGone_ = false;
            terminal_ = event.terminal;
            message_.clear();
            percent_ = -1;
            break;
        case Kind::Progress:
            if (event.total > 0)
                percent_ = static_cast<int>(Whole * event.done / event.total);
            break;
        case Kind::Result:
            Judge(event);
            break;
        case Kind::Gone:
            isGone_ = true;
            break;
        case Kind::Warning:
            warning_ = event.message;
            break;
        case Kind::End:
            break;
    }
}

void Lane::Judge(const SeriesEvent& event)
{
    state_ = VerdictOf(event.entry.result);
    terminal_ = event.terminal;
    message_ = IsPass(state_) ? std::string() : event.entry.message;
    lastVerdict_ = state_;
    lastTerminal_ = terminal_;
}

void Lane::End(const std::string& failure)
{
    isRunning_ = false;
    // The verdict stays to be read.
    if (failure.empty() && (state_ == State::Waiting || state_ == State::NoPort || state_ == State::Working))
        state_ = State::Idle;
    if (failure.empty())
        return;
    state_ = State::Ended;
    message_ = failure;
}

bool Lane::CanRetry() const
{
    return state_ == State::Ended || (!isGone_ && IsFailure(state_));
}

}  // namespace kelvora
