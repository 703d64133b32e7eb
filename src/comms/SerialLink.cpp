#include "comms/SerialLink.h"

#include <algorithm>
#include <random>

#include "comms/Reply.h"

namespace kelvora {

namespace {

/// Silence, from the end of a transmission and from the last byte that came, after which a command is sent
/// again.
constexpr std::chrono::milliseconds SilenceTime{1000};

constexpr int MaximumSilences = 3;

constexpr const char* DamagedAnswers = "every answer came damaged";
constexpr const char* OtherAnswers = "every answer was the one to another command";

constexpr char ReplyLetter = 'M';
constexpr char ErrorLetter = 'E';
constexpr char RejectedLetter = 'R';

std::chrono::milliseconds RoundedUp(std::chrono::nanoseconds time)
{
    return std::chrono::ceil<std::chrono::milliseconds>(time);
}

}  // namespace

SerialLink::SerialLink(SerialPort& port, EventLoop& loop) : port_(port), loop_(loop), timer_(loop.NewTimer())
{
    port_.onBytes = [this] { TakeBytes(); };
    port_.onLost = [this] { Lose(); };
}

SerialLink::~SerialLink()
{
    Close();
    port_.onBytes = nullptr;
    port_.onLost = nullptr;
}

bool SerialLink::Open(std::string_view settings)
{
    if (open_)
        return true;
    const auto parsed = ParseSerialSettings(settings);
    // A frame's data has bytes of all values.
    if (!parsed || parsed->dataBits != 8) {
        failure_ = parsed ? PortFailure::SevenBits : PortFailure::BadSettings;
        return false;
    }
    if (port_.IsOpen()) {
        failure_ = PortFailure::InUse;
        return false;
    }
    if (!port_.SetSettings(settings) || !port_.Open()) {
        failure_ = port_.Failure() == PortFailure::None ? PortFailure::BadSettings : port_.Failure();
        return false;
    }
    // The terminal must not take the first command for the last one of another program, nor of this one.
    constexpr unsigned OtherNumbers = 0xFFFF;
    exchange_ = static_cast<std::uint16_t>(exchange_ + std::random_device()() % OtherNumbers);
    settings_ = *parsed;
    receiver_ = {};
    answers_ = 0;
    written_ = loop_.Now();
    failure_ = PortFailure::None;
    open_ = true;
    return true;
}

void SerialLink::Close()
{
    timer_->Stop();
    inFlight_.reset();
    if (!open_)
        return;
    WatchRest();
    open_ = false;
    port_.Close();
}

std::chrono::milliseconds SerialLink::LongestExchange() const
{
    return UsualSends * RoundedUp(settings_.TimeOf(2 * LongestFrame) + SilenceTime);
}

std::chrono::milliseconds SerialLink::LongestFrameTime() const
{
    return RoundedUp(settings_.TimeOf(LongestFrame));
}

void SerialLink::Send(std::string_view command, int mostSends)
{
    inFlight_ = std::make_unique<InFlight>();
    if (!open_) {
        Finish(LinkEvent::CommunicationError, "the line is closed");
        return;
    }
    ++exchange_;
    inFlight_->command = command;
    inFlight_->name = CommandName(command);
    inFlight_->mostSends = mostSends;
    Transmit();
}

void SerialLink::Transmit()
{
    const std::string frame = BuildFrame({exchange_, inFlight_->command});
    ++inFlight_->sends;
    ++inFlight_->sendsUnheard;
    // A command that was given up may still be leaving.
    written_ = std::max(written_, loop_.Now()) + settings_.TimeOf(frame.size());
    inFlight_->sent = written_;
    inFlight_->silentUntil = inFlight_->sent + SilenceTime;
    inFlight_->answerUntil = inFlight_->silentUntil + settings_.TimeOf(LongestFrame);
    port_.Write(frame);
    Watch(LineTraffic::Direction::Sent, LineTraffic::Damage::None, frame);
    ArmSilence();
}

void SerialLink::ArmSilence()
{
    timer_->Start(RoundedUp(inFlight_->silentUntil - loop_.Now()), [this] {
        // Bytes that came in between have moved the end of the wait.
        if (loop_.Now() < inFlight_->silentUntil)
            ArmSilence();
        else
            Silence();
    });
}

void SerialLink::TakeBytes()
{
    if (!open_)
        return;
    const std::string bytes = port_.Read();
    if (inFlight_ && !bytes.empty()) {
        inFlight_->sendsUnheard = 0;
        // Bytes without end that make no frame are no answer; where time is short, those between frames are
        // none.
        const bool mayAnswer = inFlight_->mostSends >= UsualSends || receiver_.InFrame() ||
                               bytes.find(LinkByte::Soh) != std::string::npos;
        if (mayAnswer)
            inFlight_->silentUntil =
                std::min(std::max(inFlight_->silentUntil, loop_.Now() + SilenceTime), inFlight_->answerUntil);
    }
    for (const char byte : bytes) {
        if (byte == LinkByte::Soh)
            WatchRest();
        TakeEvent(receiver_.Take(byte));
    }
}

void SerialLink::TakeEvent(FrameReceiver::Event event)
{
    using enum FrameReceiver::Event;
    if (event == None)
        return;
    Watch(LineTraffic::Direction::Received,
          event == Damage ? LineTraffic::Damage::BadFrame : LineTraffic::Damage::None, receiver_.Bytes());
    if (event == Frame)
        TakeFrame(receiver_.Frame());
    else
        TakeDamage(DamagedAnswers);
}

void SerialLink::TakeFrame(const LinkFrame& frame)
{
    ++answers_;
    // An answer to an earlier command, repeated needlessly.
    if (!inFlight_ || frame.exchange != exchange_)
        return;
    const std::string_view body = frame.body;
    switch (body.empty() ? '\0' : body.front()) {
        case ReplyLetter:
            return TakeReply(body.substr(1));
        case ErrorLetter:
            return Finish(LinkEvent::CommandError, body.substr(1));
        case RejectedLetter:
            return Finish(LinkEvent::CommandRejected, body.substr(1));
        default:
            return TakeDamage(DamagedAnswers);
    }
}

// The reply of another command cannot be what the terminal meant to say.
void SerialLink::TakeReply(std::string_view reply)
{
    if (reply.starts_with(inFlight_->name))
        return Finish(LinkEvent::Reply, reply);
    // Another program's last command may have had the number that this one has begun with: the terminal
    // repeats its answer.
    if (answers_ == 1)
        ++exchange_;
    TakeDamage(OtherAnswers);
}

void SerialLink::TakeDamage(const char* what)
{
    // What was on its way before the command had left answers an earlier send.
    if (inFlight_ && loop_.Now() >= inFlight_->sent)
        Repeat(what);
}

void SerialLink::Silence()
{
    timer_->Stop();
    WatchRest();
    receiver_.Forget();
    if (inFlight_->sendsUnheard == std::min(MaximumSilences, inFlight_->mostSends))
        Finish(LinkEvent::TimeOut, "no answer");
    else
        Repeat(DamagedAnswers);
}

void SerialLink::Repeat(const char* why)
{
    if (inFlight_->sends == inFlight_->mostSends)
        Finish(LinkEvent::CommunicationError, why);
    else
        Transmit();
}

void SerialLink::Lose()
{
    if (!open_)
        return;
    WatchRest();
    open_ = false;
    failure_ = port_.Failure();
    if (inFlight_)
        Finish(LinkEvent::CommunicationError, port_.LastError());
}

void SerialLink::Finish(LinkEvent event, std::string_view text)
{
    timer_->Stop();
    inFlight_.reset();
    if (onEvent)
        onEvent(event, text);
}

void SerialLink::Watch(LineTraffic::Direction direction, LineTraffic::Damage damage,
                       std::string_view bytes) const
{
    if (watcher)
        watcher({direction, damage, bytes});
}

// What has come and is not told yet: the beginning of a frame, or noise.
void SerialLink::WatchRest()
{
    if (!receiver_.HasRest())
        return;
    Watch(LineTraffic::Direction::Received,
          receiver_.InFrame() ? LineTraffic::Damage::CutShort : LineTraffic::Damage::Noise,
          receiver_.Bytes());
    receiver_.Forget();
}

}  // namespace kelvora
