// The terminal-link control behind a bridge: another program that talks to the terminal, reached over the
// network. It takes command texts and gives tagged replies back, a line each:
//
//   to the bridge     command LF
//   from the bridge   "§" letter text LF          §m reply, beginning with the command that it answers
//                                                 §e the command or the line failed
//                                                 §r the terminal refused the command
//                                                 §t the terminal does not answer
//
// Lines are bytes, "§" is A7 alone, and a carriage return before LF is dropped. Each command gets one line,
// in the order of the commands, within LongestAnswer. Whatever else comes ends the connection: lines that
// have got out of step with the commands must never be taken for their answers.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "comms/LnkControl.h"
#include "platform/EventLoop.h"

namespace kelvora {

class BridgeLink final : public LnkControl {
public:
    static constexpr std::chrono::milliseconds LongestAnswer{30'000};

    /// Bytes of a line without its end, at most: more than any terminal's answer with its tag.
    static constexpr std::size_t LongestLine = 1024;

    /// As SerialLink; the port is a connection to a bridge.
    BridgeLink(SerialPort& port, EventLoop& loop);
    ~BridgeLink() override;
    BridgeLink(const BridgeLink&) = delete;
    BridgeLink& operator=(const BridgeLink&) = delete;

    /// The line's settings are the bridge's own.
    bool Open(std::string_view settings) override;
    void Close() override;
    bool IsOpen() const override { return open_; }
    PortFailure Failure() const override { return failure_; }
    std::string LastError() const override { return lastError_; }
    std::string Device() const override { return port_.Device(); }
    void Send(std::string_view command, int mostSends) override;
    bool IsWaiting() const override { return waits_; }
    std::size_t Answers() const override { return answers_; }
    std::chrono::milliseconds LongestExchange() const override { return LongestAnswer; }
    std::chrono::milliseconds LongestFrameTime() const override { return std::chrono::milliseconds(0); }

private:
    void TakeBytes();
    void TakeLine(std::string_view line);
    void Break(const std::string& why);
    void Lose(PortFailure failure, const std::string& why);
    void Finish(LinkEvent event, std::string_view text);
    void Watch(LineTraffic::Direction direction, LineTraffic::Damage damage, std::string_view line) const;

    SerialPort& port_;
    std::unique_ptr<Timer> timer_;
    std::string line_;            ///< as far as it has come
    bool waits_ = false;          ///< the last command has no event yet
    std::size_t unanswered_ = 0;  ///< commands, those given up included
    std::size_t answers_ = 0;
    bool open_ = false;
    PortFailure failure_ = PortFailure::None;
    std::string lastError_;
};

}  // namespace kelvora
