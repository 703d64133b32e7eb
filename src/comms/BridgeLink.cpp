#include "comms/BridgeLink.h"

#include <optional>
#include <utility>

#include "comms/LinkFrame.h"
#include "comms/Reply.h"

namespace kelvora {

namespace {

std::optional<LinkEvent> EventOf(std::string_view tag)
{
    if (tag == ReplyTag::Reply)
        return LinkEvent::Reply;
    if (tag == ReplyTag::Failed)
        return LinkEvent::CommandError;
    if (tag == ReplyTag::Rejected)
        return LinkEvent::CommandRejected;
    return tag == ReplyTag::GaveUp ? std::optional(LinkEvent::TimeOut) : std::nullopt;
}

}  // namespace

BridgeLink::BridgeLink(SerialPort& port, EventLoop& loop) : port_(port), timer_(loop.NewTimer())
{
    port_.onBytes = [this] { TakeBytes(); };
    port_.onLost = [this] { Lose(port_.Failure(), port_.LastError()); };
}

BridgeLink::~BridgeLink()
{
    Close();
    port_.onBytes = nullptr;
    port_.onLost = nullptr;
}

bool BridgeLink::Open(std::string_view /*settings*/)
{
    if (open_)
        return true;
    failure_ = PortFailure::None;
    lastError_.clear();
    if (port_.IsOpen()) {
        failure_ = PortFailure::InUse;
        return false;
    }
    line_.clear();
    unanswered_ = 0;
    answers_ = 0;
    open_ = true;
    // What comes at once may have ended it already.
    if (!port_.Open() && open_) {
        open_ = false;
        failure_ = port_.Failure();
        lastError_ = port_.LastError();
    }
    return open_;
}

void BridgeLink::Close()
{
    timer_->Stop();
    waits_ = false;
    if (!open_)
        return;
    open_ = false;
    port_.Close();
}

void BridgeLink::Send(std::string_view command, int /*mostSends*/)
{
    waits_ = true;
    if (!open_) {
        Finish(LinkEvent::CommunicationError, lastError_.empty() ? "the line is closed" : lastError_);
        return;
    }
    ++unanswered_;
    port_.Write(std::string(command) + LinkByte::LineFeed);
    Watch(LineTraffic::Direction::Sent, LineTraffic::Damage::None, command);
    timer_->Start(LongestAnswer, [this] { Finish(LinkEvent::TimeOut, "no answer from the bridge"); });
}

void BridgeLink::TakeBytes()
{
    for (const char byte : port_.Read()) {
        // A line may have ended the connection.
        if (!open_)
            return;
        if (byte != LinkByte::LineFeed) {
            line_ += byte;
            if (line_.size() > LongestLine + 1)
                Break("a line of the bridge is too long");
            continue;
        }
        std::string line = std::move(line_);
        line_.clear();
        if (line.ends_with(LinkByte::CarriageReturn))
            line.pop_back();
        TakeLine(line);
    }
}

void BridgeLink::TakeLine(std::string_view line)
{
    const auto event = EventOf(line.substr(0, ReplyTag::Reply.size()));
    Watch(LineTraffic::Direction::Received, event ? LineTraffic::Damage::None : LineTraffic::Damage::BadFrame,
          line);
    if (!event)
        return Break("a line of the bridge has no tag");
    if (unanswered_ == 0)
        return Break("the bridge has answered what was not asked");
    if (event != LinkEvent::TimeOut)
        ++answers_;
    // Answers to commands that were given up come first.
    if (--unanswered_ == 0 && waits_)
        Finish(*event, line.substr(ReplyTag::Reply.size()));
}

void BridgeLink::Break(const std::string& why)
{
    port_.Close();
    Lose(PortFailure::NoBridge, why);
}

void BridgeLink::Lose(PortFailure failure, const std::string& why)
{
    if (!open_)
        return;
    open_ = false;
    failure_ = failure;
    lastError_ = why;
    if (waits_)
        Finish(LinkEvent::CommunicationError, why);
}

void BridgeLink::Finish(LinkEvent event, std::string_view text)
{
    timer_->Stop();
    waits_ = false;
    if (onEvent)
        onEvent(event, text);
}

void BridgeLink::Watch(LineTraffic::Direction direction, LineTraffic::Damage damage,
                       std::string_view line) const
{
    if (watcher)
        watcher({direction, damage, line});
}

}  // namespace kelvora
