#include "series/Series.h"

#include <utility>

#include "catalogue/OneLineText.h"
#include "comms/LineCommands.h"
#include "comms/LineErrorText.h"
#include "comms/Reply.h"
#include "flash/TransferTexts.h"
#include "platform/Encoding.h"
#include "platform/SerialSettings.h"

namespace kelvora {

namespace {

using Kind = SeriesEvent::Kind;
using Result = JournalEntry::Result;

// Notes whether a frame, whole or damaged, comes from the line. Others may watch it too.
class Listener {
public:
    explicit Listener(LnkControl& channel) : channel_(channel), former_(std::move(channel.watcher))
    {
        channel_.watcher = [this](const LineTraffic& traffic) {
            // A stray byte on a line that nobody is on is no sign of life.
            heard_ = heard_ || (traffic.direction == LineTraffic::Direction::Received &&
                                traffic.damage != LineTraffic::Damage::Noise);
            if (former_)
                former_(traffic);
        };
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    ~Listener() { channel_.watcher = std::move(former_); }

    bool Heard() const { return heard_; }

private:
    LnkControl& channel_;
    TrafficWatcher former_;
    bool heard_ = false;
};

std::chrono::milliseconds TimeOfCall(const LineTarget& target, std::chrono::milliseconds usual)
{
    // A command and the answer with a name that is not short.
    constexpr std::size_t Bytes = 64;
    if (target.timeout > 0)
        return std::chrono::milliseconds(target.timeout);
    const auto settings = ParseSerialSettings(target.settings);
    return usual + (settings ? std::chrono::ceil<std::chrono::milliseconds>(settings->TimeOf(Bytes)) : usual);
}

std::string PortText(const LineTarget& target, const LineResult& result)
{
    const LineErrorText error = DescribeLineFailure(MessageCatalogue(), target, result);
    return OneLineText(std::string(error.message.fallback) + "\n" + error.extra);
}

}  // namespace

Series::Series(Comms& comms, LineTarget target, int count, SeriesWorld world)
    : comms_(comms), target_(std::move(target)), count_(count), world_(std::move(world))
{
}

bool Series::IsOver() const
{
    return world_.stops() > 0 || (count_ > 0 && counts_.All() >= count_);
}

void Series::Tell(Kind kind, const std::string& message)
{
    world_.tell({.kind = kind, .line = target_.line, .message = message, .counts = counts_});
}

SeriesCounts Series::Run()
{
    std::optional<std::string> next;
    while (!IsOver()) {
        const auto name = next ? std::exchange(next, std::nullopt) : FindTerminal();
        if (!name)
            break;
        if (Work(*name) && !IsOver())
            next = WaitUntilGone(*name);
    }
    Tell(Kind::End);
    return counts_;
}

Series::Call Series::CallTerminal(LineWork& work, std::string& name)
{
    LnkControl& channel = *comms_.Channel(target_.line);
    const Listener listener(channel);
    try {
        name = Attention(work);
        return Call::Answered;
    } catch (const ReplyError&) {
        if (!channel.IsOpen())
            return Call::PortAway;
        return listener.Heard() ? Call::Damaged : Call::Silent;
    }
}

// Calls again and again until `isEnd` says so, the port goes away or the user stops.
LineResult Series::CallUntil(std::chrono::milliseconds callTime,
                             const std::function<bool(Call, const std::string&)>& isEnd)
{
    callTime = TimeOfCall(target_, callTime);
    const LineTarget calls{target_.line, target_.settings, static_cast<int>(callTime.count())};
    const LineHooks hooks{[this] { return world_.stops() > 0; }, {}};
    return WorkOnLine(comms_, calls, hooks, [&](LineWork& work, LineResult& /*line*/) {
        std::string name;
        EventLoop::Time next = work.Now();
        do {
            // A terminal that answers is not called without a rest.
            while (work.Now() < next && world_.stops() == 0)
                Pause();
            next = work.Now() + callTime;
            name.clear();
        } while (!isEnd(CallTerminal(work, name), name));
    });
}

void Series::Pause()
{
    constexpr std::chrono::milliseconds Step{100};
    bool isOver = false;
    const auto timer = comms_.Loop().NewTimer();
    timer->Start(Step, [&isOver] { isOver = true; });
    while (!isOver)
        comms_.Loop().Yield();
}

std::optional<std::string> Series::FindTerminal()
{
    std::optional<std::string> found;
    std::string toldPort;
    bool isToldDamage = false;
    Tell(Kind::Waiting);
    while (!found && !IsOver()) {
        const LineResult called = CallUntil(CallTime, [&](Call call, const std::string& name) {
            if (call == Call::Answered)
                found = name;
            if (!toldPort.empty() && call != Call::PortAway) {
                toldPort.clear();
                Tell(Kind::Waiting);
            }
            if (call == Call::Damaged && !std::exchange(isToldDamage, true))
                Tell(Kind::Waiting, OneLineText(Message::LineMalformed.fallback));
            return call == Call::Answered || call == Call::PortAway;
        });
        if (called.outcome != LineOutcome::NoPort)
            continue;
        if (const std::string text = PortText(target_, called); text != std::exchange(toldPort, text))
            Tell(Kind::NoPort, text);
        const EventLoop::Time again = comms_.Loop().Now() + CallTime;
        while (comms_.Loop().Now() < again && !IsOver())
            Pause();
    }
    return found;
}

TransferResult Series::Transfer(const std::string& name, const ChosenSetup& setup)
{
    const LineHooks hooks{[this] { return world_.stops() > 1; },
                          [this](const LineProgress& progress) {
                              world_.tell({.kind = Kind::Progress,
                                           .line = target_.line,
                                           .done = progress.done,
                                           .total = progress.total});
                          }};
    TransferSteps steps{world_.keepBackup, [](const TransferPlan& /*plan*/, const std::string& /*backup*/) {
                            return TransferAnswer::Yes;
                        }};
    steps.terminalName = name;
    return Download(comms_, target_, hooks, *setup.document, steps);
}

bool Series::Work(const std::string& name)
{
    world_.tell({.kind = Kind::Found, .line = target_.line, .terminal = Utf8FromText(name)});
    OperationNote note = world_.beginNote();
    JournalEntry& entry = note.Entry();
    isPortAway_ = false;
    const ChosenSetup setup = world_.choose(name);
    std::vector<std::string> changes;
    if (setup.document) {
        note.OfFile(setup.path, setup.content);
        const TransferResult result = Transfer(name, setup);
        if (result.refusal && result.refusal->reason == TransferRefusal::Reason::OtherTerminal)
            return false;
        note.Tell(target_, result);
        isPortAway_ = result.line.failure.port != PortFailure::None;
        if (result.plan)
            for (const std::string& line : ChangeLines(MessageCatalogue(), *result.plan))
                changes.push_back(OneLineText(line));
    } else {
        entry.file = Utf8FromPath(setup.path);
        entry.message = setup.why;
    }
    entry.terminal = Utf8FromText(name);
    if (const std::string why = note.End(); !why.empty())
        Tell(Kind::Warning, "the journal could not be kept: " + OneLineText(why));
    Judge(entry, std::move(changes));
    return true;
}

void Series::Judge(const JournalEntry& entry, std::vector<std::string> changes)
{
    int& count = entry.result == Result::Done      ? counts_.done
                 : entry.result == Result::Same    ? counts_.same
                 : entry.result == Result::Stopped ? counts_.stopped
                                                   : counts_.failed;
    ++count;
    world_.tell({.kind = Kind::Result,
                 .line = target_.line,
                 .terminal = entry.terminal,
                 .entry = entry,
                 .changes = std::move(changes),
                 .counts = counts_});
}

std::optional<std::string> Series::WaitUntilGone(const std::string& name)
{
    constexpr int SilentCalls = 2;
    std::optional<std::string> next;
    int silent = 0;
    if (!isPortAway_)
        CallUntil(GoneCallTime, [&](Call call, const std::string& answer) {
            if (call == Call::Answered && answer != name)
                next = answer;
            silent = call == Call::Silent ? silent + 1 : 0;
            return next || call == Call::PortAway || silent == SilentCalls;
        });
    if (world_.stops() == 0)
        Tell(Kind::Gone);
    return next;
}

}  // namespace kelvora
