// A serial port with a module behind it that answers what is written from a script, on virtual time.
#pragma once

#include <array>
#include <chrono>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fakes/FakeEventLoop.h"
#include "platform/SerialPort.h"

namespace kelvora {

/// A text of bytes that may be 0.
template <std::size_t N>
std::string Bytes(const char (&literal)[N])
{
    return {literal, N - 1};
}

class ScriptedPort final : public SerialPort {
public:
    /// Bytes that come so many milliseconds after what they answer.
    struct Part {
        int delayMs;
        std::string bytes;
        bool operator==(const Part&) const = default;
    };
    using Answer = std::vector<Part>;

    explicit ScriptedPort(FakeEventLoop& loop) : loop_(loop) {}

    const std::string& Device() const override { return device_; }
    void SetDevice(std::string device) override { device_ = std::move(device); }
    bool Open() override { return open_ = opens; }
    void Close() override { open_ = false; }
    bool IsOpen() const override { return open_; }
    PortFailure Failure() const override { return PortFailure::InUse; }
    std::string LastError() const override { return "Device or resource busy"; }
    bool SetSettings(std::string_view settings) override
    {
        settings_ = settings;
        return true;
    }
    const std::string& Settings() const override { return settings_; }
    bool HasFixedSettings() const override { return open_ && fixedSettings; }
    void Write(std::string_view bytes) override
    {
        written.emplace_back(bytes);
        if (!open_ || (!heardAt.empty() && settings_ != heardAt))
            return;
        std::deque<Answer>& answersOf = answers[std::string(bytes)];
        if (answersOf.empty())
            return;
        for (const Part& part : answersOf.front())
            loop_.After(std::chrono::milliseconds(part.delayMs),
                        [this, text = part.bytes] { input_ += text; });
        if (answersOf.size() > 1)
            answersOf.pop_front();
    }
    std::size_t BytesWaiting() const override { return input_.size(); }
    std::string Read(std::size_t limit) override
    {
        std::string bytes = input_.substr(0, limit == 0 ? input_.size() : limit);
        input_.erase(0, bytes.size());
        return bytes;
    }
    void DiscardInput() override { input_.clear(); }

    bool opens = true;
    bool fixedSettings = false;
    std::string heardAt;  ///< settings at which there is an answer; empty for any
    std::map<std::string, std::deque<Answer>> answers;  ///< by what is written; each but the last once
    std::vector<std::string> written;

private:
    FakeEventLoop& loop_;
    std::string device_ = "/dev/ttyS0";
    std::string settings_ = "9600,n,8,1";
    std::string input_;
    bool open_ = false;
};

// Requests of the protocol, byte by byte.
inline const std::string Enquiry = "\x05";
inline const std::array Identify{Bytes("\x02\x02\x00\xF7\xF7\x03"), Bytes("\x02\x02\x01\xF7\xF6\x03"),
                                 Bytes("\x02\x02\x02\xF7\xF5\x03"), Bytes("\x02\x02\x03\xF7\xF4\x03"),
                                 Bytes("\x02\x02\x04\xF7\xF3\x03"), Bytes("\x02\x02\x05\xF7\xF2\x03"),
                                 Bytes("\x02\x02\x06\xF7\xF1\x03")};
inline const std::array ReadRequest{
    Bytes("\x02\x05\x00\xF9\x00\xAA\x08\x5B\x03"), Bytes("\x02\x05\x01\xF9\x00\xAA\x08\x5A\x03"),
    Bytes("\x02\x05\x02\xF9\x00\xAA\x08\x59\x03"), Bytes("\x02\x05\x03\xF9\x00\xAA\x08\x58\x03")};

// Replies: to identify, and to a read of the blocks of a composite keyboard, a badge reader for tracks 2 and
// 3, an extension keyboard, and a display without light.
inline const std::string IdentityReply = Bytes("\x02\x06\x00\xF7\x01\x02\x03\x04\xF3\x03");
inline const std::string CompositeReply = Bytes("\x02\x0A\x00\xF9\xAA\x55\xD6\x17\xFF\xFF\x04\x00\xC3\x03");
inline const std::string BadgeReply = Bytes("\x02\x0A\x00\xF9\xAA\x55\x00\x00\x00\x02\x00\x00\x04\x03");
inline const std::string SlaveReply = Bytes("\x02\x0A\x00\xF9\xAA\x55\xBF\x00\x00\x00\x00\x00\xB9\x03");
inline const std::string UnlitReply = Bytes("\x02\x0A\x00\xF9\xAA\x55\x00\x1F\x00\x00\x00\x00\x19\x03");

/// A module acknowledges within the handshake's window, and replies after it.
inline ScriptedPort::Answer Reply(const std::string& frame)
{
    return {{20, "\x06"}, {130, frame}};
}

/// Gives a line of modules its answers to all requests but writes; `blocks` are the replies to reads.
inline void Attach(ScriptedPort& port, const std::vector<std::string>& blocks)
{
    port.answers[Enquiry] = {{{5, "\x11"}}};
    for (std::size_t address = 0; address < blocks.size(); ++address) {
        port.answers[Identify.at(address)] = {Reply(IdentityReply)};
        port.answers[ReadRequest.at(address)] = {Reply(blocks[address])};
    }
}

}  // namespace kelvora
