#include "platform/qt/QtSerialPort.h"

#include <utility>

#include "platform/qt/Text.h"

namespace kelvora {

QtSerialPort::QtSerialPort(std::string device) : device_(std::move(device)) {}

bool QtSerialPort::Open()
{
    if (!port_)
        port_ = std::make_unique<QSerialPort>(PathToQString(device_));
    return port_->open(QIODevice::ReadWrite);
}

void QtSerialPort::Close()
{
    if (port_)
        port_->close();
}

bool QtSerialPort::IsOpen() const
{
    return port_ && port_->isOpen();
}

std::string QtSerialPort::LastError() const
{
    return port_ ? FromQString(port_->errorString()) : std::string();
}

}  // namespace kelvora
