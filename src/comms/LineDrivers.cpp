#include "comms/LineDrivers.h"

#include "comms/Crc.h"
#include "comms/FlashCommands.h"
#include "comms/LineCommands.h"
#include "comms/Reply.h"

namespace kelvora {

namespace {

bool Open(LnkControl& channel, const LineTarget& target, const LineHooks& hooks)
{
    channel.isGivenUp = hooks.stopRequested;
    const bool isOpen = channel.Open(target.settings);
    channel.isGivenUp = nullptr;
    return isOpen;
}

LineFailure FailureToOpen(const LnkControl& channel)
{
    LineFailure failure;
    failure.port = channel.Failure();
    failure.device = channel.Device();
    failure.group = channel.AllowedGroup();
    failure.detail = channel.LastError();
    if (failure.port == PortFailure::InUse)
        failure.holder = channel.Holder();
    return failure;
}

// Closes the line whatever happens.
class LineCloser {
public:
    explicit LineCloser(LnkControl& channel) : channel_(channel) {}
    ~LineCloser() { channel_.Close(); }
    LineCloser(const LineCloser&) = delete;
    LineCloser& operator=(const LineCloser&) = delete;

private:
    LnkControl& channel_;
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
    if (!Open(*channel, target, hooks)) {
        result.failure = FailureToOpen(*channel);
        const bool isGivenUp = result.failure.port == PortFailure::GivenUp;
        result.outcome = isGivenUp ? LineOutcome::Stopped : LineOutcome::NoPort;
        return result;
    }
    const LineCloser closer(*channel);
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
