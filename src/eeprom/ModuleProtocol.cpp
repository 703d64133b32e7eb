#include "eeprom/ModuleProtocol.h"

#include <array>
#include <utility>

#include "catalogue/Texts.h"
#include "platform/LineAddress.h"

namespace kelvora {

namespace {

/// How long a module may take to answer ENQ and to acknowledge the frame, in milliseconds; from the module
/// protocol, as are the two below.
constexpr int HandshakeMs = 50;

/// The line is quiet when nothing comes in a wait of that many milliseconds.
constexpr int QuietMs = 50;

constexpr std::array<std::string_view, 4> SpeedSettings{"9600,n,8,1", "4800,n,8,1", "2400,n,8,1",
                                                        "1200,n,8,1"};

/// An acknowledgement is ACK ACK, ACK NAK or one byte; what follows belongs to the reply.
constexpr std::size_t AcknowledgementLength = 2;

constexpr int SettleMs = 50;

/// No reply is longer: a line that is never quiet must not hold the program up for ever.
constexpr std::size_t LongestReply = 4096;
constexpr std::chrono::seconds LongestNoise{5};

}  // namespace

ModuleProtocol::ModuleProtocol(SerialPort& port, EventLoop& loop, Prompt& prompt)
    : port_(port), loop_(loop), prompt_(prompt), timer_(loop)
{
}

void ModuleProtocol::SetCommSpeed(int speed)
{
    if (speed >= 1 && speed <= static_cast<int>(SpeedSettings.size()))
        port_.SetSettings(SpeedSettings.at(static_cast<std::size_t>(speed) - 1));
}

bool ModuleProtocol::OpenCommsLine()
{
    refusal_ = PortFailure::None;
    if (IsOpen())
        return true;
    opened_ = false;
    if (port_.IsOpen())
        refusal_ = PortFailure::InUse;
    else if (IsBridge(port_.Device()))
        refusal_ = PortFailure::CommandsOnly;
    else
        opened_ = port_.Open();
    if (opened_ && port_.HasFixedSettings()) {
        Close();
        refusal_ = PortFailure::FixedSettings;
    }
    return opened_;
}

PortFailure ModuleProtocol::Failure() const
{
    return refusal_ == PortFailure::None ? port_.Failure() : refusal_;
}

void ModuleProtocol::Close()
{
    if (IsOpen())
        port_.Close();
    opened_ = false;
}

void ModuleProtocol::CloseCommsLine()
{
    if (!IsOpen())
        return;
    Close();
    timer_.SetTimeout(SettleMs);
    WaitForTimeout();
}

bool ModuleProtocol::SendMsg(std::string_view data)
{
    SendPacket(BuildModuleFrame(data));
    return CommsError() == CommsErrorCode::None;
}

bool ModuleProtocol::SendCmd(std::string_view command, std::string_view data)
{
    return SendMsg(std::string(command).append(data));
}

void ModuleProtocol::SendPacket(std::string_view frame)
{
    ResetCommsError();
    Discard();
    Write({&ProtocolCharacter::ENQ, 1});
    timer_.SetTimeout(HandshakeMs);
    while (timer_.IsRunning() && port_.BytesWaiting() == 0)
        loop_.Yield();
    SetCommsError(TakeAnswer(0, JudgeHandshake));
    // What else the module says on its way here must not be taken for its acknowledgement.
    YieldOnce();
    Discard();
    if (CommsError() != CommsErrorCode::None)
        return;
    Write(frame);
    // The same time-out bounds the acknowledgement, and lasts to its end however fast the answer comes: a
    // module that has more to say than ACK waits for that.
    WaitForTimeout();
    SetCommsError(TakeAnswer(AcknowledgementLength, JudgeAcknowledgement));
}

void ModuleProtocol::Write(std::string_view bytes)
{
    port_.Write(bytes);
    if (IsOpen())
        Watch(LineTraffic::Direction::Sent, LineTraffic::Damage::None, bytes);
}

std::int16_t ModuleProtocol::TakeAnswer(std::size_t limit, std::int16_t (*judge)(std::string_view))
{
    const std::string answer = port_.Read(limit);
    const std::int16_t error = judge(answer);
    const bool belongs = error != CommsErrorCode::NotReady && error != CommsErrorCode::IllegalCharacter;
    Watch(LineTraffic::Direction::Received, belongs ? LineTraffic::Damage::None : LineTraffic::Damage::Noise,
          answer);
    return error;
}

void ModuleProtocol::Discard()
{
    if (watcher)
        Watch(LineTraffic::Direction::Received, LineTraffic::Damage::Noise, port_.Read());
    port_.DiscardInput();
}

void ModuleProtocol::Watch(LineTraffic::Direction direction, LineTraffic::Damage damage,
                           std::string_view bytes) const
{
    if (watcher && !bytes.empty())
        watcher({direction, damage, bytes});
}

std::string ModuleProtocol::WaitMsg(std::uint8_t expected, bool framed, int timeoutMs)
{
    ResetCommsError();
    timer_.SetTimeout(timeoutMs);
    const std::size_t enough = expected + (framed ? ModuleFrameOverhead : 0);
    do
        loop_.Yield();
    while (timer_.IsRunning() && (expected == 0 || port_.BytesWaiting() < enough));
    std::string received = port_.Read(expected == 0 ? ReadLengthWhenQuiet() : 0);
    if (received.empty() || !framed) {
        Watch(LineTraffic::Direction::Received, LineTraffic::Damage::None, received);
        return received;
    }
    FramedReply reply = JudgeReply(received);
    Watch(LineTraffic::Direction::Received,
          reply.error == CommsErrorCode::None ? LineTraffic::Damage::None : LineTraffic::Damage::BadFrame,
          received);
    SetCommsError(reply.error);
    return std::move(reply.data);
}

// The number of bytes that wait once no more have come for one whole wait.
std::size_t ModuleProtocol::ReadLengthWhenQuiet()
{
    std::size_t before{};
    std::size_t waiting = port_.BytesWaiting();
    do {
        before = waiting;
        timer_.SetTimeout(QuietMs);
        WaitForTimeout();
        waiting = port_.BytesWaiting();
    } while (waiting != before && waiting < LongestReply);
    return waiting;
}

std::size_t ModuleProtocol::CheckMsg()
{
    if (timer_.IsRunning())
        loop_.Yield();
    else
        YieldOnce();
    return port_.BytesWaiting();
}

bool ModuleProtocol::WaitQuiet(std::chrono::milliseconds quiet)
{
    const EventLoop::Time start = loop_.Now();
    EventLoop::Time latest = start;
    while (IsOpen() && loop_.Now() - latest < quiet) {
        if (loop_.Now() - start > LongestNoise)
            return false;
        timer_.SetTimeout(0);
        while (timer_.IsRunning() && port_.BytesWaiting() == 0)
            loop_.Yield();
        if (port_.BytesWaiting() > 0)
            latest = loop_.Now();
        Discard();
    }
    return IsOpen();
}

// Lets what is due happen, without waiting for more.
void ModuleProtocol::YieldOnce()
{
    loop_.After(std::chrono::milliseconds(0), [] {});
    loop_.Yield();
}

void ModuleProtocol::WaitForTimeout()
{
    while (timer_.IsRunning())
        loop_.Yield();
}

void ModuleProtocol::SetCommsError(std::int16_t code)
{
    if (code == CommsErrorCode::None)
        return;
    if (reportCommsErrors_ && IsOpen())
        ErrorOut(code);
    prevCommsError_ = lastCommsError_;
    lastCommsError_ = code;
}

void ModuleProtocol::ErrorOut(std::int16_t code)
{
    prompt_.Show(ProductName, CommsErrorText(code), {BoxIcon::Exclamation});
}

}  // namespace kelvora
