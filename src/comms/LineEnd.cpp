#include "comms/LineEnd.h"

#include <utility>

#include "comms/FlashCommands.h"
#include "comms/LineCommands.h"
#include "comms/Reply.h"

namespace kelvora {

namespace {

using Step = LineWarning::Step;

// A terminal that has not answered one step has little time for the others.
void Attempt(LineWork& work, Step step, const std::function<void()>& action, LineWarnings& warnings)
{
    try {
        action();
    } catch (const ReplyError& error) {
        warnings.push_back({step, error.what()});
        if (work.IsUnanswered())
            work.Hurry();
    }
}

void PayDebts(LineWork& work, LineWarnings& warnings)
{
    LineDebts& debts = work.Debts();
    if (debts.release)
        Attempt(
            work, Step::NotReleased, [&] { ReleaseLine(work); }, warnings);
    debts.release = false;
    if (debts.endOfTransfer)
        Attempt(
            work, Step::TransferNotEnded, [&] { SetLineMode(work, LineMode::AfterTransfer); }, warnings);
    debts.endOfTransfer = false;
    if (debts.mode)
        Attempt(
            work, Step::ModeNotSet, [&] { SetLineMode(work, *debts.mode); }, warnings);
    debts.mode.reset();
}

}  // namespace

void CloseReadFlash(LineWork& work, LineWarnings& warnings)
{
    Attempt(
        work, Step::FlashNotClosed,
        [&] {
            EndStaging(work);
            CloseFlash(work);
        },
        warnings);
}

void EndWork(LineWork& work, bool isDone, LineWarnings& warnings)
{
    if (!isDone) {
        work.Debts().endOfTransfer = false;
        work.Hurry();
    }
    try {
        PayDebts(work, warnings);
    } catch (const LineStopped&) {
        // All that was wanted is done: the stop only leaves less time.
        work.Debts().endOfTransfer = false;
        work.Hurry();
        PayDebts(work, warnings);
    }
}

}  // namespace kelvora
