// A serial port of this machine.
#pragma once

#include <string>

namespace kelvora {

class SerialPort {
public:
    virtual ~SerialPort() = default;

    /// Opens the port with its present settings. False when that fails; LastError then says why.
    virtual bool Open() = 0;
    virtual void Close() = 0;
    virtual bool IsOpen() const = 0;

    /// Why the last Open failed; the system's description.
    virtual std::string LastError() const = 0;

protected:
    SerialPort() = default;
    SerialPort(const SerialPort&) = default;
    SerialPort& operator=(const SerialPort&) = default;
};

}  // namespace kelvora
