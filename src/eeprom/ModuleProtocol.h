// The link to the keyboard's modules over a serial port of its own: a request goes out as one frame after a
// handshake, waits last until their timer ends them, and an error register says how the latest exchange went.
// Nothing is tried twice here.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "comms/LineTraffic.h"
#include "eeprom/ModuleFrame.h"
#include "eeprom/WaitTimer.h"
#include "platform/EventLoop.h"
#include "platform/Prompt.h"
#include "platform/SerialPort.h"

namespace kelvora {

class ModuleProtocol {
public:
    /// All must outlive the protocol. `prompt` shows the errors while they are reported.
    ModuleProtocol(SerialPort& port, EventLoop& loop, Prompt& prompt);

    /// 1 to 4 for 9600, 4800, 2400, 1200 baud with no parity, 8 data bits, 1 stop bit; any other index
    /// changes nothing.
    void SetCommSpeed(int speed);
    const std::string& Settings() const { return port_.Settings(); }

    /// Opens the port where it is closed. Returns whether it is open then; a port that somebody else in the
    /// program has opened is not, nor one whose speed cannot be changed.
    bool OpenCommsLine();
    /// Why the last OpenCommsLine failed, or why the line was lost.
    PortFailure Failure() const;
    /// Closes the port where it is open, and waits a moment for the line to settle.
    void CloseCommsLine();
    /// Closes the port where it is open.
    void Close();
    bool IsOpen() const { return opened_ && port_.IsOpen(); }

    /// Told of all that passes, discarded bytes as noise.
    TrafficWatcher watcher;

    /// Sends a frame of at most 255 data bytes. Returns whether the module has acknowledged it.
    bool SendMsg(std::string_view data);
    /// The same with `data` following `command`.
    bool SendCmd(std::string_view command, std::string_view data);

    /// Waits for a reply, all of `timeoutMs` unless `expected` bytes (four more when framed) come before; 0
    /// is as many as come until the line is quiet. Returns the data of a framed reply, else all that came;
    /// empty, and no error, when nothing came.
    std::string WaitMsg(std::uint8_t expected, bool framed, int timeoutMs);

    /// Lets what is due happen and tells how many bytes wait to be read; while a time-out runs, waits for the
    /// next thing to happen.
    std::size_t CheckMsg();

    /// Waits until nothing has come for that long, and throws away what came. False when the line is not
    /// quiet in five seconds, or is lost.
    bool WaitQuiet(std::chrono::milliseconds quiet);

    /// Whether each error is shown when it is recorded. Errors of a line that is lost are not: no module is
    /// to blame for them.
    void SetReportCommsErrors(bool report) { reportCommsErrors_ = report; }

    /// The latest exchange's error; 0 for none.
    std::int16_t CommsError() const { return lastCommsError_; }
    /// The error before the latest one, of whichever exchange.
    std::int16_t PrevCommsError() const { return prevCommsError_; }
    /// Shows an error.
    void ErrorOut(std::int16_t code);

private:
    void SendPacket(std::string_view frame);
    void Write(std::string_view bytes);
    std::int16_t TakeAnswer(std::size_t limit, std::int16_t (*judge)(std::string_view));
    void Discard();
    void Watch(LineTraffic::Direction direction, LineTraffic::Damage damage, std::string_view bytes) const;
    void YieldOnce();
    void WaitForTimeout();
    std::size_t ReadLengthWhenQuiet();
    void SetCommsError(std::int16_t code);
    void ResetCommsError() { lastCommsError_ = CommsErrorCode::None; }

    SerialPort& port_;
    EventLoop& loop_;
    Prompt& prompt_;
    WaitTimer timer_;
    bool opened_ = false;
    PortFailure refusal_ = PortFailure::None;  ///< the protocol's own
    bool reportCommsErrors_ = false;
    std::int16_t lastCommsError_ = CommsErrorCode::None;
    std::int16_t prevCommsError_ = CommsErrorCode::None;
};

}  // namespace kelvora
