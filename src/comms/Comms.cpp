#include "comms/Comms.h"

#include <optional>

#include "comms/Reply.h"
#include "platform/TextLines.h"

namespace kelvora {

namespace {

std::string_view TagOf(LinkEvent event)
{
    switch (event) {
        case LinkEvent::Reply:
            return ReplyTag::Reply;
        case LinkEvent::CommandRejected:
            return ReplyTag::Rejected;
        case LinkEvent::TimeOut:
            return ReplyTag::GaveUp;
        case LinkEvent::CommandError:
        case LinkEvent::CommunicationError:
            break;
    }
    return ReplyTag::Failed;
}

// A line end within the text would end the mailbox's line there.
std::string OneLine(std::string_view text)
{
    std::string line(text);
    for (char& c : line)
        if (c == '\r' || c == '\n')
            c = ' ';
    return line;
}

std::string TakeLine(std::string& mailbox)
{
    const std::size_t end = mailbox.find(LineEnd);
    std::string line = mailbox.substr(0, end);
    mailbox.erase(0, end == std::string::npos ? end : end + LineEnd.size());
    return line;
}

bool IsFailure(std::string_view line)
{
    const std::string_view tag = line.substr(0, 2);
    return tag == ReplyTag::Failed || tag == ReplyTag::Rejected || tag == ReplyTag::DefaultTime ||
           tag == ReplyTag::GaveUp || tag == ReplyTag::Undefined;
}

// The tag of a status that is a failure by itself; empty for every other.
std::string_view StatusTag(std::string_view status)
{
    if (status.starts_with("#999"))
        return ReplyTag::Status999;
    if (status.starts_with("!2"))
        return ReplyTag::Rejected;
    if (status.starts_with("!3"))
        return ReplyTag::Status3;
    return status.starts_with("!5") ? ReplyTag::Status5 : std::string_view();
}

std::string ReadReply(std::string_view reply, std::string_view name)
{
    const std::string_view status = StatusTag(reply.substr(name.size()));
    if (!status.empty())
        return std::string(status).append(reply);
    if (!ReplyFields(reply, name))
        return std::string(ReplyTag::Malformed)
            .append("a field of the reply to ")
            .append(name)
            .append(" runs past its end");
    return std::string(reply);
}

// What a wait makes of a line; nothing when it is skipped. Only replies and failures of the line itself are
// looked for; a prefix of one character matches no reply.
std::optional<std::string> JudgeLine(const std::string& line, std::string_view prefix)
{
    if (prefix.empty())
        return line;
    const std::string_view text(line);
    if (prefix.size() == 1) {
        if (text == prefix)
            return line;
    } else if (text.starts_with(ReplyTag::Reply)) {
        const std::string_view reply = text.substr(ReplyTag::Reply.size());
        if (reply.starts_with(prefix))
            return ReadReply(reply, prefix);
    }
    return IsFailure(text) ? std::optional(line) : std::nullopt;
}

}  // namespace

Comms::Comms(EventLoop& loop, const std::array<LnkControl*, LineCount>& channels)
    : loop_(loop),
      channels_(channels),
      clocks_{CountdownTimer(loop), CountdownTimer(loop), CountdownTimer(loop), CountdownTimer(loop),
              CountdownTimer(loop)}
{
    for (LnkControl* channel : channels_)
        if (channel)
            channel->onEvent = [channel](LinkEvent event, std::string_view text) {
                channel->Text.append(TagOf(event)).append(OneLine(text)).append(LineEnd);
            };
}

Comms::~Comms()
{
    for (LnkControl* channel : channels_)
        if (channel)
            channel->onEvent = nullptr;
}

LnkControl* Comms::Channel(int line) const
{
    return line >= 1 && line <= LineCount ? channels_.at(static_cast<std::size_t>(line) - 1) : nullptr;
}

void Comms::Send(int line, std::string_view command, int mostSends)
{
    LnkControl* channel = Channel(line);
    channel->Text.clear();
    lastCommand_ = command;
    channel->Send(command, mostSends);
}

std::string Comms::WaitReply(int line, std::string_view prefix, int timeout,
                             const std::function<bool()>& isOver)
{
    CountdownTimer& clock = Clock(line);
    const bool limited = timeout >= 0;
    if (limited)
        clock.Enable(timeout == 0 ? DefaultTimeout : timeout);
    else
        clock.Disable();
    std::string& mailbox = Channel(line)->Text;
    while (true) {
        if (mailbox.empty()) {
            if (isOver && isOver()) {
                clock.Disable();
                return {};
            }
            loop_.Yield();
            if (limited && !clock.Enabled())
                return std::string(timeout == 0 ? ReplyTag::DefaultTime : ReplyTag::GivenTime);
            continue;
        }
        if (auto reply = JudgeLine(TakeLine(mailbox), prefix)) {
            clock.Disable();
            return *std::move(reply);
        }
    }
}

}  // namespace kelvora
