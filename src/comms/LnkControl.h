// The terminal-link control of one serial line, as the program sees it: it takes a command text, talks to the
// terminal, and tells of what comes back.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "comms/LineTraffic.h"
#include "platform/SerialPort.h"

namespace kelvora {

/// What a control tells of; each comes with a text.
enum class LinkEvent {
    Reply,               ///< the terminal's reply, beginning with the command that it answers
    CommandError,        ///< the terminal could not do the command
    CommandRejected,     ///< the terminal refused the command
    CommunicationError,  ///< the line failed
    TimeOut,             ///< the terminal does not answer; the control has given up
};

class LnkControl {
public:
    virtual ~LnkControl() = default;

    /// Opens the line with these settings. False when that fails; Failure and LastError then say why.
    virtual bool Open(std::string_view settings) = 0;
    virtual void Close() = 0;
    virtual bool IsOpen() const = 0;
    virtual PortFailure Failure() const = 0;
    virtual std::string LastError() const = 0;

    /// The device behind the line, the group whose members may use it, and who holds it; as in SerialPort.
    virtual std::string Device() const = 0;
    virtual std::string AllowedGroup() const { return {}; }
    virtual std::string Holder() const { return {}; }

    /// As in SerialPort.
    virtual bool HasFixedSettings() const { return false; }

    /// How often a command is sent at the most, unless its sender says less.
    static constexpr int UsualSends = 12;

    /// Sends a command, again when it or its answer is lost or damaged, `mostSends` times in all. One that is
    /// in flight is given up; no event comes of it any more.
    virtual void Send(std::string_view command, int mostSends) = 0;

    /// Whether a command is in flight: an event for it is still to come.
    virtual bool IsWaiting() const = 0;

    /// How many whole answers the terminal has given, to whatever command, since the line was opened.
    virtual std::size_t Answers() const = 0;

    /// The longest that the control itself may take, at the line's speed, to an event for a command.
    virtual std::chrono::milliseconds LongestExchange() const = 0;

    /// How long the longest frame is on its way, at the line's speed.
    virtual std::chrono::milliseconds LongestFrameTime() const = 0;

    /// Asked now and then while Open waits for a line on the network: true gives it up. May be empty.
    std::function<bool()> isGivenUp;

    /// Called on the event loop, or by Send itself.
    std::function<void(LinkEvent event, std::string_view text)> onEvent;

    /// Told of what goes over the line; empty while nobody watches.
    TrafficWatcher watcher;

    /// The control's text property, free for its user: the line's mailbox.
    std::string Text;
};

}  // namespace kelvora
