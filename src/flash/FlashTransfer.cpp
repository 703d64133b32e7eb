#include "flash/FlashTransfer.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "comms/Crc.h"
#include "comms/FlashCommands.h"
#include "comms/LineCommands.h"
#include "comms/Reply.h"
#include "platform/Files.h"

namespace kelvora {

namespace {

using Reason = TransferResult::Reason;
using State = TransferResult::State;

/// A port that was plugged out and in, or a server that starts anew, is there again within some seconds.
constexpr int ReopenTries = 10;
constexpr std::chrono::milliseconds ReopenPause{500};

void Pause(EventLoop& loop, std::chrono::milliseconds pause, const LineHooks& hooks)
{
    constexpr std::chrono::milliseconds Look{100};
    const EventLoop::Time end = loop.Now() + pause;
    const auto timer = loop.NewTimer();
    timer->Start(Look, [] {});
    while (loop.Now() < end && !hooks.stopRequested())
        loop.Yield();
}

class Transfer {
public:
    Transfer(Comms& comms, const LineTarget& target, const LineHooks& hooks, const WantedContent& wanted,
             const TransferSteps& steps)
        : comms_(comms), target_(target), hooks_(hooks), wanted_(wanted), steps_(steps)
    {
    }

    TransferResult Run();

private:
    // Each returns whether the next one follows; if not, the result says why.
    bool IsForALine();
    bool Read();
    bool Plan();
    bool KeepAndAsk();

    void Write();
    bool IsStillHeld(LineWork& work);
    void Commit(LineWork& work);
    void AskState(LineWork& work);
    void AskOnReopenedPort();
    bool LostPortInCommit() const;

    bool End(Reason reason)
    {
        result_.reason = reason;
        return false;
    }

    Comms& comms_;
    const LineTarget& target_;
    const LineHooks& hooks_;
    const WantedContent& wanted_;
    const TransferSteps& steps_;
    TransferResult result_;
};

bool Transfer::IsForALine()
{
    result_.refusal = RefusalFor(wanted_);
    return !result_.refusal || End(Reason::Refused);
}

bool Transfer::Read()
{
    result_.line = WorkOnLine(comms_, target_, hooks_, [this](LineWork& work, LineResult& line) {
        line.terminalName = Attention(work);
        if (steps_.terminalName.value_or(line.terminalName) != line.terminalName) {
            result_.refusal.emplace().reason = TransferRefusal::Reason::OtherTerminal;
            return;
        }
        HoldLine(work);
        line.deviceMap = AskDeviceMap(work);
        result_.refusal = RefusalFor(wanted_, line.deviceMap);
        work.Debts().endOfTransfer = true;
        if (result_.refusal)
            return;
        ResetBlockAddress(work);
        OpenFlash(work);
        line.image = ReadWholeFlash(work);
        CloseReadFlash(work, line.warnings);
    });
    result_.image = ImageFrom(result_.line.image);
    if (result_.refusal)
        return End(Reason::Refused);
    // One that came too late to stop the reading still comes before the question.
    if (result_.line.IsDone() && hooks_.stopRequested && hooks_.stopRequested())
        result_.line.outcome = LineOutcome::Stopped;
    return result_.line.IsDone() || End(Reason::Line);
}

bool Transfer::Plan()
{
    result_.plan = PlanTransfer(wanted_, result_.line.deviceMap, *result_.image);
    result_.plan->terminal = result_.line.terminalName;
    if (!result_.plan->ChangesNothing())
        return true;
    result_.state = State::Same;
    return End(Reason::Done);
}

bool Transfer::KeepAndAsk()
{
    try {
        result_.backup = steps_.keepBackup(*result_.plan);
    } catch (const FileError& error) {
        result_.backup = error.Path();
        result_.fileError = error.what();
        return End(Reason::NotKept);
    }
    switch (steps_.ask(*result_.plan, result_.backup)) {
        case TransferAnswer::Yes:
            return true;
        case TransferAnswer::No:
            return End(Reason::Declined);
        case TransferAnswer::KeepContents:
            break;
    }
    return End(Reason::ContentsKept);
}

bool Transfer::IsStillHeld(LineWork& work)
{
    if (AskFlashCrc(work) == Crc32(TextOf(result_.plan->held)))
        return true;
    result_.image.reset();
    result_.state = State::Foreign;
    return End(Reason::DeviceChanged);
}

void Transfer::Write()
{
    LineResult read = std::move(result_.line);
    const bool owesRelease = std::ranges::any_of(read.warnings, [](const LineWarning& warning) {
        return warning.step == LineWarning::Step::NotReleased;
    });
    result_.line = WorkOnLine(comms_, target_, hooks_, [&](LineWork& work, LineResult& line) {
        read.warnings.clear();
        line.deviceMap = std::move(read.deviceMap);
        line.image = std::move(read.image);
        line.terminalName = std::move(read.terminalName);
        // Also when a stop comes before this work holds the line itself.
        work.Debts().release = owesRelease;
        HoldLine(work);
        work.Debts().endOfTransfer = true;
        if (!IsStillHeld(work))
            return;
        OpenFlash(work);
        StageDifferences(work, TextOf(result_.plan->held), TextOf(result_.plan->wanted));
        EndStaging(work);
        work.CheckStop();
        work.Unstoppably([&] { Commit(work); });
    });
    // What the terminal was not told at the end of the reading it still does not know when the port stays
    // closed.
    std::ranges::move(read.warnings, std::back_inserter(result_.line.warnings));
    if (LostPortInCommit())
        AskOnReopenedPort();
    if (!result_.line.IsDone() && result_.reason == Reason::Done)
        result_.reason = Reason::Line;
}

void Transfer::Commit(LineWork& work)
{
    result_.state = State::Unknown;
    result_.image.reset();
    try {
        CommitFlash(work, Crc32(TextOf(result_.plan->wanted)));
        result_.state = State::New;
        result_.image = result_.plan->wanted;
    } catch (const ReplyError&) {
        AskState(work);
        if (result_.state != State::New)
            throw;
    }
}

// What came of a commit whose answer is lost.
void Transfer::AskState(LineWork& work)
{
    try {
        const std::uint32_t crc = AskFlashCrc(work);
        const bool isNew = crc == Crc32(TextOf(result_.plan->wanted));
        if (!isNew && crc != Crc32(TextOf(result_.plan->held)))
            return;
        result_.state = isNew ? State::New : State::Old;
        result_.image = isNew ? result_.plan->wanted : result_.plan->held;
    } catch (const ReplyError&) {
        // The commit's own failure is the one to tell of.
    }
}

bool Transfer::LostPortInCommit() const
{
    return result_.state == State::Unknown && result_.line.failure.port != PortFailure::None;
}

// The line may be held still: the terminal has not seen the end of the work.
void Transfer::AskOnReopenedPort()
{
    // What came of a commit must be known before a stop is heard; that one was asked for twice still shows.
    const LineHooks deaf{[this] {
                             if (hooks_.stopRequested)
                                 hooks_.stopRequested();
                             return false;
                         },
                         hooks_.progress};
    LineResult asked;
    asked.outcome = LineOutcome::NoPort;
    for (int tries = 0; tries < ReopenTries && asked.outcome == LineOutcome::NoPort; ++tries) {
        Pause(comms_.Loop(), ReopenPause, deaf);
        asked = WorkOnLine(comms_, target_, deaf, [this](LineWork& work, LineResult& line) {
            line.deviceMap = result_.line.deviceMap;
            line.image = result_.line.image;
            line.terminalName = result_.line.terminalName;
            work.Debts() = {.release = true, .endOfTransfer = true};
            AskState(work);
        });
    }
    if (result_.state == State::New)
        result_.line = std::move(asked);
    else if (asked.outcome != LineOutcome::NoPort)
        result_.line.warnings = std::move(asked.warnings);
}

TransferResult Transfer::Run()
{
    result_.isRestore = std::holds_alternative<FlashDump>(wanted_);
    if (IsForALine() && Read() && Plan() && KeepAndAsk())
        Write();
    return std::move(result_);
}

}  // namespace

TransferResult Download(Comms& comms, const LineTarget& target, const LineHooks& hooks,
                        const WantedContent& wanted, const TransferSteps& steps)
{
    return Transfer(comms, target, hooks, wanted, steps).Run();
}

VerifyResult Verify(Comms& comms, const LineTarget& target, const LineHooks& hooks,
                    const SetupDocument& document, const FlashImage* lastRead)
{
    VerifyResult result;
    auto built = BuildSetupImage(document, lastRead);
    if (const auto* const refusal = std::get_if<BuildRefusal>(&built)) {
        result.outcome = VerifyResult::Outcome::NotBuilt;
        result.refusal = *refusal;
        return result;
    }
    result.line = Upload(comms, target, hooks);
    result.deviceImage = ImageFrom(result.line.image);
    if (!result.deviceImage)
        return result;
    if (!lastRead)
        built = BuildSetupImage(document, &*result.deviceImage);
    result.setupImage = std::get<FlashImage>(built);
    result.firstDifference = FirstDifference(*result.setupImage, *result.deviceImage, false);
    result.outcome =
        result.firstDifference == 0 ? VerifyResult::Outcome::Same : VerifyResult::Outcome::Different;
    result.differences = DescribeDifferences(*result.setupImage, *result.deviceImage, document.Modules);
    std::erase_if(result.differences, [](const ImageDifference& difference) { return !difference.region; });
    return result;
}

}  // namespace kelvora
