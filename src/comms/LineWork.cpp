#include "comms/LineWork.h"

#include <algorithm>
#include <utility>

#include "comms/Reply.h"

namespace kelvora {

namespace {

constexpr std::string_view StatusDone = "0";

/// A wait ends after the control has given up by itself, not before.
constexpr std::chrono::seconds ControlMargin{1};

/// How long one send of a command in a hurry takes at the most.
constexpr std::chrono::seconds HurriedSend{1};

// A refusal that names the command: the number alone does not tell where the work stopped.
[[noreturn]] void RaiseAt(std::string_view name, const ReplyError& error)
{
    std::string text(name);
    const std::string_view description(error.what());
    // A status that is a failure by itself comes with its whole reply.
    const auto fields = description.starts_with(name) ? ReplyFields(description, name) : std::nullopt;
    if (fields && !fields->empty())
        text.append(": status ").append(fields->front());
    else if (error.Number() == ReplyErrorNumber::GivenTime)
        text.append(": no answer in time");
    else if (!description.empty())
        text.append(": ").append(description);
    throw ReplyError(error.Number(), text);
}

}  // namespace

LineWork::LineWork(Comms& comms, int line, LineHooks hooks, int timeout)
    : comms_(comms), line_(line), channel_(*comms.Channel(line)), hooks_(std::move(hooks)), timeout_(timeout)
{
    if (timeout_ == 0)
        timeout_ = static_cast<int>((channel_.LongestExchange() + ControlMargin).count());
}

// Also who does not hear a stop asks for it: a second wish can then be known as such.
bool LineWork::WantsStop() const
{
    const bool isWanted = hooks_.stopRequested && hooks_.stopRequested();
    return isWanted && hearsStop_;
}

void LineWork::CheckStop() const
{
    if (WantsStop())
        throw LineStopped();
}

void LineWork::Unstoppably(const std::function<void()>& work)
{
    class Deafness {
    public:
        explicit Deafness(bool& hears) : hears_(hears), heard_(std::exchange(hears, false)) {}
        ~Deafness() { hears_ = heard_; }
        Deafness(const Deafness&) = delete;
        Deafness& operator=(const Deafness&) = delete;

    private:
        bool& hears_;
        bool heard_;
    };
    const Deafness deafness(hearsStop_);
    work();
}

void LineWork::Hurry()
{
    hearsStop_ = false;
    mostSends_ = channel_.Answers() > 0 ? 2 : 1;
    if (!endsBy_)
        endsBy_ = Now() + mostSends_ * HurriedSend + channel_.LongestFrameTime();
}

int LineWork::WaitTime() const
{
    if (!endsBy_)
        return timeout_;
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(*endsBy_ - Now());
    // A command that comes when the time is used up still leaves the machine.
    return static_cast<int>(std::max(left, CountdownTimer::Interval).count());
}

std::string LineWork::WaitFor(std::string_view name)
{
    bool isStopped = false;
    std::string reply = comms_.WaitReply(line_, name, WaitTime(), [&] {
        isStopped = WantsStop();
        return isStopped || !channel_.IsWaiting();
    });
    if (isStopped)
        throw LineStopped();
    if (reply.empty())
        throw ReplyError(ReplyErrorNumber::Malformed,
                         std::string(name) + ": the answer is the one to another command");
    return reply;
}

std::vector<std::string> LineWork::Exchange(std::string_view command)
{
    CheckStop();
    const std::string_view name = CommandName(command);
    answersBefore_ = channel_.Answers();
    comms_.Send(line_, command, mostSends_);
    const std::string reply = WaitFor(name);
    try {
        RaiseForReply(reply, name.size());
    } catch (const ReplyError& error) {
        RaiseAt(name, error);
    }
    auto fields = ReplyFields(reply, name).value_or(std::vector<std::string>());
    if (fields.empty())
        throw ReplyError(ReplyErrorNumber::Malformed, std::string(name) + ": no status");
    return fields;
}

std::vector<std::string> LineWork::Ask(std::string_view command, std::size_t fieldCount)
{
    return Ask(command, fieldCount, fieldCount);
}

std::vector<std::string> LineWork::Ask(std::string_view command, std::size_t fewest, std::size_t most)
{
    auto fields = Exchange(command);
    const std::string name(CommandName(command));
    if (fields.front() != StatusDone)
        throw ReplyError(ReplyErrorNumber::Failed, name + ": status " + fields.front());
    if (fields.size() < fewest || fields.size() > most)
        throw ReplyError(ReplyErrorNumber::Malformed, name + ": another number of fields");
    return fields;
}

void LineWork::Tell(const LineProgress& progress) const
{
    if (hooks_.progress)
        hooks_.progress(progress);
}

}  // namespace kelvora
