#include "comms/LineDrivers.h"

#include "comms/Crc.h"
#include "comms/FlashCommands.h"
#include "comms/LineCommands.h"
#include "comms/Reply.h"

namespace kelvora {

namespace {

// Closes the line whatever happens.
class OpenLine {
public:
    OpenLine(LnkControl& channel, const LineTarget& target, const LineHooks& hooks) : channel_(channel)
    {
        channel.isGivenUp = hooks.stopRequested;
        isOpen_ = channel.Open(target.settings);
        channel.isGivenUp = nullptr;
    }
    ~OpenLine() { channel_.Close(); }
    OpenLine(const OpenLine&) = delete;
    OpenLine& operator=(const OpenLine&) = delete;

    bool IsOpen() const { return isOpen_; }

private:
    LnkControl& channel_;
    bool isOpen_ = false;
};

}  // namespace

LineResult WorkOnLine(Comms& comms, const LineTarget& target, const LineHooks& hooks,
                      const std::function<void(LineWork&, LineResult&)>& work)
{
    LineResult result;
    LnkControl* channel = comms.Channel(target.line);
    if (!channel) {
        result.outcome = LineOutcome::NoPort;
        result.failure.port = PortFailure::Missing;
        return result;
    }
    const OpenLine line(*channel, target, hooks);
    if (!line.IsOpen()) {
        const bool isGivenUp = channel->Failure() == PortFailure::GivenUp;
        result.outcome = isGivenUp ? LineOutcome::Stopped : LineOutcome::NoPort;
        const bool isInUse = channel->Failure() == PortFailure::InUse;
        result.failure = {channel->Failure(),   0,
                          channel->Device(),    channel->AllowedGroup(),
                          channel->LastError(), isInUse ? channel->Holder() : std::string()};
        return result;
    }
    LineWork steps(comms, target.line, hooks, target.timeout);
    try {
        work(steps, result);
    } catch (const LineStopped&) {
        result.outcome = LineOutcome::Stopped;
    } catch (const ReplyError& error) {
        result.outcome = LineOutcome::Failed;
        result.failure = {channel->IsOpen() ? PortFailure::None : channel->Failure(),
                          error.Number(),
                          channel->Device(),
                          {},
                          error.what(),
                          {},
                          channel->HasFixedSettings()};
    }
    if (channel->IsOpen())
        EndWork(steps, result.IsDone(), result.warnings);
    else if (steps.Debts().release)
        result.warnings.push_back({LineWarning::Step::NotReleased, {}});
    return result;
}

std::string ReadWholeFlash(LineWork& work)
{
    std::string image = ReadFlash(work);
    if (AskFlashCrc(work) != Crc32(image))
        throw ReplyError(ReplyErrorNumber::Malformed, "0F02: the flash was not read as it stands");
    return image;
}

LineResult ScanWithUpload(Comms& comms, const LineTarget& target, const LineHooks& hooks,
                          std::optional<char> mode)
{
    return WorkOnLine(comms, target, hooks, [mode, &hooks](LineWork& work, LineResult& result) {
        result.terminalName = Attention(work);
        HoldLine(work);
        result.deviceMap = AskDeviceMap(work);
        if (!result.deviceMap.empty()) {
            work.Debts().mode = mode;
            if (hooks.mapRead)
                hooks.mapRead(result.deviceMap);
        }
        ResetBlockAddress(work);
        OpenFlash(work);
        result.image = ReadWholeFlash(work);
        CloseReadFlash(work, result.warnings);
        work.Debts().endOfTransfer = true;
    });
}

LineResult Upload(Comms& comms, const LineTarget& target, const LineHooks& hooks)
{
    return WorkOnLine(comms, target, hooks, [](LineWork& work, LineResult& result) {
        OpenFlash(work);
        ResetBlockAddress(work);
        result.image = ReadFlash(work);
        work.Debts().endOfTransfer = true;
    });
}

}  // namespace kelvora
