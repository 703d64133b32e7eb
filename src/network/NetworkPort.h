// A serial line behind a server on the network, or the connection to a bridge, as a serial port.
//
// Which language the server speaks: a server with telnet sends its wishes as soon as it is connected to, and
// only then telnet is spoken; telnet bytes to a raw server would go out on the line to the devices. A server
// whose line is in use hangs up at once, so that a moment is waited also where nothing is to be found out.
#pragma once

#include <memory>
#include <string>

#include "network/ComPortSession.h"
#include "platform/Connection.h"
#include "platform/EventLoop.h"
#include "platform/LineAddress.h"
#include "platform/SerialPort.h"

namespace kelvora {

class NetworkPort final : public SerialPort {
public:
    /// How long Open may take.
    static constexpr std::chrono::milliseconds OpenTime{5000};
    /// How long a server's telnet is waited for, and a raw server's or a bridge's hanging up.
    static constexpr std::chrono::milliseconds ListenTime{500};
    static constexpr std::chrono::milliseconds HangUpTime{100};
    /// How long the server may take to answer telnet wishes, and settings.
    static constexpr std::chrono::milliseconds AnswerTime{2000};

    /// What nobody reads is thrown away from here on, as a serial port of this machine does.
    static constexpr std::size_t MaximumInput = 65536;

    /// `loop` outlives the port.
    NetworkPort(std::unique_ptr<Connection> connection, EventLoop& loop);

    const std::string& Device() const override { return device_; }
    void SetDevice(std::string device) override;
    bool Open() override;
    void Close() override;
    bool IsOpen() const override { return stage_ == Stage::Open; }
    PortFailure Failure() const override { return failure_; }
    std::string LastError() const override { return lastError_; }
    bool SetSettings(std::string_view settings) override;
    const std::string& Settings() const override { return settings_; }
    bool HasFixedSettings() const override
    {
        return IsOpen() && !(speaksTelnet_ && session_.TakesSettings());
    }
    void Write(std::string_view bytes) override;
    std::size_t BytesWaiting() const override { return input_.size(); }
    std::string Read(std::size_t limit = 0) override;
    void DiscardInput() override;

private:
    enum class Stage { Closed, Connecting, Listening, Negotiating, Setting, Open };

    void Connected();
    void Arrive(std::string_view bytes);
    void BeginTelnet();
    void TakeTelnet(std::string_view bytes);
    void Continue();
    void JudgeTelnet();
    void JudgeSettings();
    void EndStage();
    void EnterOpen();
    void Deliver(std::string_view bytes);
    void Disconnected(PortFailure failure, const std::string& words);
    void Fail(PortFailure failure, const std::string& words);
    bool Set(const SerialSettings& settings);
    void Lose(const std::string& words);

    std::unique_ptr<Connection> connection_;
    EventLoop& loop_;
    std::unique_ptr<Timer> deadline_;  ///< of Open
    std::unique_ptr<Timer> timer_;     ///< of a stage, and of settings
    std::string device_;
    std::string settings_ = "9600,n,8,1";
    LineAddress address_;
    Stage stage_ = Stage::Closed;
    bool speaksTelnet_ = false;
    ComPortSession session_;
    std::string heard_;  ///< what the server has said before the line is open
    std::string input_;
    PortFailure failure_ = PortFailure::None;
    std::string lastError_;
};

}  // namespace kelvora
