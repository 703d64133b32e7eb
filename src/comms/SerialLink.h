// The terminal-link control over a serial port: stop and wait, with repetition of what was lost or damaged.
// Frames are told in comms/LinkFrame.h. The host's body is the command; the terminal's is a letter (M reply,
// E command error, R rejected) and the event's text.
#pragma once

#include <cstdint>
#include <memory>

#include "comms/LinkFrame.h"
#include "comms/LnkControl.h"
#include "platform/EventLoop.h"
#include "platform/SerialSettings.h"

namespace kelvora {

class SerialLink final : public LnkControl {
public:
    /// Both outlive the link, which takes the port's callbacks. The port may be used by others while the link
    /// is closed.
    SerialLink(SerialPort& port, EventLoop& loop);
    ~SerialLink() override;
    SerialLink(const SerialLink&) = delete;
    SerialLink& operator=(const SerialLink&) = delete;

    bool Open(std::string_view settings) override;
    void Close() override;
    bool IsOpen() const override { return open_; }
    PortFailure Failure() const override { return failure_; }
    std::string LastError() const override { return port_.LastError(); }
    std::string Device() const override { return port_.Device(); }
    std::string AllowedGroup() const override { return port_.AllowedGroup(); }
    std::string Holder() const override { return port_.Holder(); }
    void Send(std::string_view command, int mostSends) override;
    bool IsWaiting() const override { return inFlight_ != nullptr; }
    std::size_t Answers() const override { return answers_; }
    bool HasFixedSettings() const override { return port_.HasFixedSettings(); }
    std::chrono::milliseconds LongestExchange() const override;
    std::chrono::milliseconds LongestFrameTime() const override;

private:
    struct InFlight {
        std::string command;
        std::string name;  ///< of the command, with which its reply begins
        int mostSends = 0;
        int sends = 0;
        int sendsUnheard = 0;         ///< since the last byte that came
        EventLoop::Time sent;         ///< when the last send was over
        EventLoop::Time silentUntil;  ///< when silence has lasted long enough
        EventLoop::Time answerUntil;  ///< when the longest answer would have come
    };

    void Transmit();
    void ArmSilence();
    void TakeBytes();
    void TakeEvent(FrameReceiver::Event event);
    void TakeFrame(const LinkFrame& frame);
    void TakeReply(std::string_view reply);
    void TakeDamage(const char* what);
    void Silence();
    void Repeat(const char* why);
    void Lose();
    void Finish(LinkEvent event, std::string_view text);
    void Watch(LineTraffic::Direction direction, LineTraffic::Damage damage, std::string_view bytes) const;
    void WatchRest();

    SerialPort& port_;
    EventLoop& loop_;
    std::unique_ptr<Timer> timer_;
    SerialSettings settings_;
    FrameReceiver receiver_;
    std::uint16_t exchange_ = 0;  ///< of the last command
    bool open_ = false;
    std::size_t answers_ = 0;
    EventLoop::Time written_;  ///< when all that was written has left
    PortFailure failure_ = PortFailure::None;
    std::unique_ptr<InFlight> inFlight_;
};

}  // namespace kelvora
