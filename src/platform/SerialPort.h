// A serial line: a port of this machine, or a line behind a server on the network. What arrives is told on
// the event loop; nothing here waits, but opening and setting a line on the network.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace kelvora {

/// Why a port does not open.
enum class PortFailure {
    None,
    Missing,         ///< no such device
    NotSerial,       ///< a file, a folder or a device that is no serial port
    NotAllowed,      ///< the account may not use it
    InUse,           ///< another program holds it
    BadSettings,     ///< the port cannot take its settings
    PseudoTerminal,  ///< it is one, and cannot take its settings
    SevenBits,       ///< the terminal's link needs bytes of 8 bits
    HostNotFound,    ///< no machine has that name
    Refused,         ///< the machine has no server there
    NoAnswer,        ///< the machine or its server does not answer
    NoSettings,      ///< the server does not take settings, and must
    HungUp,          ///< the server ends the connection at once
    Disconnected,    ///< the connection has ended
    NoBridge,        ///< what answers does not speak as a bridge does
    FixedSettings,   ///< the server has fixed the speed, which the modules' protocol has to change
    CommandsOnly,    ///< a bridge carries no bytes of a line
    GivenUp,         ///< whoever opened the port would wait no longer
    Other,
};

class SerialPort {
public:
    virtual ~SerialPort() = default;

    /// The device behind the port, such as "/dev/ttyS0", or an address of platform/LineAddress.h; it can be
    /// changed while the port is closed.
    virtual const std::string& Device() const = 0;
    virtual void SetDevice(std::string device) = 0;

    /// Opens the port with its settings. False when that fails; Failure and LastError then say why. A line on
    /// the network lets the event loop run meanwhile, for five seconds at most.
    virtual bool Open() = 0;
    virtual void Close() = 0;
    virtual bool IsOpen() const = 0;

    /// Why the last Open failed, or why the port was lost.
    virtual PortFailure Failure() const = 0;
    /// The same in the words of the system, the server or the bridge: for those who help, in English as a
    /// rule.
    virtual std::string LastError() const = 0;
    /// The group whose members may use the device; empty where there is none to join.
    virtual std::string AllowedGroup() const { return {}; }
    /// The program that holds the device, such as "minicom (PID 1234)"; empty where none is found.
    virtual std::string Holder() const { return {}; }

    /// "<baud>,<parity>,<data bits>,<stop bits>"; see platform/SerialSettings.h. An open port takes them at
    /// once; a line on the network lets the event loop run meanwhile, and may be lost by it. False, and
    /// nothing changed, when the text or the port does not allow them.
    virtual bool SetSettings(std::string_view settings) = 0;
    virtual const std::string& Settings() const = 0;

    /// Whether the open line's settings are set at its other end, and those given here have no effect.
    virtual bool HasFixedSettings() const { return false; }

    /// Hands bytes to the line; they leave at the line's speed. A loss of the port is told later, not from
    /// here. Nothing is sent while the port is closed.
    virtual void Write(std::string_view bytes) = 0;

    virtual std::size_t BytesWaiting() const = 0;
    /// The bytes that wait, at most `limit` of them; all when it is 0.
    virtual std::string Read(std::size_t limit = 0) = 0;
    /// Throws away what waits to be read.
    virtual void DiscardInput() = 0;

    /// Asked now and then while Open waits for a line on the network: true gives it up. May be empty.
    std::function<bool()> isGivenUp;
    /// Called when bytes have come. What it calls may close the port.
    std::function<void()> onBytes;
    /// Called when an open port has gone away; it is closed then, and LastError says why.
    std::function<void()> onLost;
};

}  // namespace kelvora
