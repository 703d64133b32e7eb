#include "comms/LineEnd.h"

#include "comms/FlashCommands.h"
#include "comms/LineCommands.h"
#include "comms/Reply.h"

namespace kelvora {

namespace {

using Step = LineWarning::Step;

void Attempt(Step step, const std::function<void()>& action, LineWarnings& warnings)
{
    try {
        action();
    } catch (const ReplyError& error) {
        warnings.push_back({step, error.what()});
    }
}

}  // namespace

void CloseReadFlash(LineWork& work, LineWarnings& warnings)
{
    const auto attempt = [&](void (*step)(LineWork&)) {
        Attempt(
            Step::FlashNotClosed, [&] { step(work); }, warnings);
        // A terminal that has not answered has little time for what follows.
        if (work.IsUnanswered())
            work.Hurry();
    };
    attempt(EndStaging);
    if (!work.IsUnanswered())
        attempt(CloseFlash);
}

void EndWork(LineWork& work, bool isDone, LineWarnings& warnings)
{
    const LineDebts debts = work.Debts();
    work.Debts() = {};
    work.Hurry();
    if (debts.release)
        Attempt(
            Step::NotReleased, [&] { ReleaseLine(work); }, warnings);
    if (debts.endOfTransfer && isDone)
        Attempt(
            Step::TransferNotEnded, [&] { SetLineMode(work, LineMode::AfterTransfer); }, warnings);
    if (debts.mode)
        Attempt(
            Step::ModeNotSet, [&] { SetLineMode(work, *debts.mode); }, warnings);
}

}  // namespace kelvora
