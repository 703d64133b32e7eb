#include "comms/LineWork.h"

#include <utility>

#include "comms/Reply.h"

namespace kelvora {

namespace {

constexpr std::string_view StatusDone = "0";

/// A wait ends after the control has given up by itself, not before.
constexpr std::chrono::milliseconds ControlMargin{1000};

// A refusal that names the command: the number alone does not tell where the work stopped.
[[noreturn]] void RaiseAt(std::string_view name, const ReplyError& error)
{
    std::string text(name);
    const std::string_view description(error.what());
    // A status that is a failure by itself comes with its whole reply.
    const auto fields = description.starts_with(name) ? ReplyFields(description, name) : std::nullopt;
    if (fields && !fields->empty())
        text.append(": status ").append(fields->front());
    else if (!description.empty())
        text.append(": ").append(description);
    throw ReplyError(error.Number(), text);
}

}  // namespace

LineWork::LineWork(Comms& comms, int line, LineHooks hooks, int timeout)
    : comms_(comms), line_(line), hooks_(std::move(hooks)), timeout_(timeout)
{
    if (timeout_ == 0)
        timeout_ = static_cast<int>((comms_.Channel(line)->LongestExchange() + ControlMargin).count());
}

void LineWork::CheckStop() const
{
    if (hooks_.stopRequested && hooks_.stopRequested())
        throw LineStopped();
}

std::vector<std::string> LineWork::Exchange(std::string_view command)
{
    CheckStop();
    const std::string_view name = CommandName(command);
    comms_.Send(line_, command);
    const std::string reply = comms_.WaitReply(line_, name, timeout_);
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
