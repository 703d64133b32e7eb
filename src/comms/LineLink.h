// The terminal-link control of a line, whatever stands behind its port: the program's own over the line's
// bytes, or that of a bridge.
#pragma once

#include <memory>
#include <string>

#include "comms/LnkControl.h"
#include "platform/EventLoop.h"

namespace kelvora {

class LineLink final : public LnkControl {
public:
    /// Both outlive the link, which takes the port's callbacks. The port may be used by others while the link
    /// is closed, and have another device then.
    LineLink(SerialPort& port, EventLoop& loop);
    LineLink(const LineLink&) = delete;
    LineLink& operator=(const LineLink&) = delete;

    bool Open(std::string_view settings) override;
    void Close() override { link_->Close(); }
    bool IsOpen() const override { return link_->IsOpen(); }
    PortFailure Failure() const override { return link_->Failure(); }
    std::string LastError() const override { return link_->LastError(); }
    std::string Device() const override { return port_.Device(); }
    std::string AllowedGroup() const override { return port_.AllowedGroup(); }
    std::string Holder() const override { return link_->Holder(); }
    bool HasFixedSettings() const override { return link_->HasFixedSettings(); }
    void Send(std::string_view command, int mostSends) override { link_->Send(command, mostSends); }
    bool IsWaiting() const override { return link_->IsWaiting(); }
    std::size_t Answers() const override { return link_->Answers(); }
    std::chrono::milliseconds LongestExchange() const override { return link_->LongestExchange(); }
    std::chrono::milliseconds LongestFrameTime() const override { return link_->LongestFrameTime(); }

private:
    void Choose();

    SerialPort& port_;
    EventLoop& loop_;
    bool isBridge_ = false;
    std::unique_ptr<LnkControl> link_;
};

}  // namespace kelvora
