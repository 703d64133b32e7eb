#include "platform/qt/QtSerialPort.h"

#include <QFileInfo>
#include <utility>

#include "platform/qt/Text.h"

namespace kelvora {

namespace {

QSerialPort::Parity ParityOf(char letter)
{
    if (letter == 'o')
        return QSerialPort::OddParity;
    return letter == 'e' ? QSerialPort::EvenParity : QSerialPort::NoParity;
}

// Qt has one error for a port that the account may not use and one that somebody holds.
PortFailure RefusalOf(const QString& device)
{
    const QFileInfo file(device);
    return file.isReadable() && file.isWritable() ? PortFailure::InUse : PortFailure::NotAllowed;
}

PortFailure FailureOf(QSerialPort::SerialPortError error, const QString& device)
{
    switch (error) {
        case QSerialPort::NoError:
            return PortFailure::None;
        case QSerialPort::DeviceNotFoundError:
            return PortFailure::Missing;
        case QSerialPort::PermissionError:
            return RefusalOf(device);
        case QSerialPort::UnsupportedOperationError:
            return PortFailure::BadSettings;
        default:
            return QFileInfo::exists(device) ? PortFailure::Other : PortFailure::Missing;
    }
}

}  // namespace

QtSerialPort::QtSerialPort(std::string device) : device_(std::move(device)) {}

void QtSerialPort::SetDevice(std::string device)
{
    Close();
    port_.reset();
    device_ = std::move(device);
}

bool QtSerialPort::Open()
{
    const auto settings = ParseSerialSettings(settings_);
    if (!port_) {
        port_ = std::make_unique<QSerialPort>(PathToQString(device_));
        QObject::connect(port_.get(), &QSerialPort::readyRead, port_.get(), [this] {
            if (onBytes)
                onBytes();
        });
        QObject::connect(port_.get(), &QSerialPort::errorOccurred, port_.get(),
                         [this](QSerialPort::SerialPortError error) {
                             if (error == QSerialPort::ResourceError)
                                 Lose();
                         });
    }
    if (!settings || !port_->open(QIODevice::ReadWrite)) {
        Fail(settings ? port_->error() : QSerialPort::UnsupportedOperationError);
        return false;
    }
    if (!Apply(*settings)) {
        Fail(QSerialPort::UnsupportedOperationError);
        port_->close();
        return false;
    }
    failure_ = PortFailure::None;
    return true;
}

void QtSerialPort::Close()
{
    if (IsOpen())
        port_->close();
}

bool QtSerialPort::IsOpen() const
{
    return port_ && port_->isOpen();
}

bool QtSerialPort::SetSettings(std::string_view settings)
{
    const auto parsed = ParseSerialSettings(settings);
    if (!parsed || (IsOpen() && !Apply(*parsed)))
        return false;
    settings_ = settings;
    return true;
}

bool QtSerialPort::Apply(const SerialSettings& settings)
{
    return port_->setBaudRate(settings.baud) &&
           port_->setDataBits(settings.dataBits == 7 ? QSerialPort::Data7 : QSerialPort::Data8) &&
           port_->setParity(ParityOf(settings.parity)) &&
           port_->setStopBits(settings.stopBits == 2 ? QSerialPort::TwoStop : QSerialPort::OneStop) &&
           port_->setFlowControl(QSerialPort::NoFlowControl);
}

void QtSerialPort::Fail(QSerialPort::SerialPortError error)
{
    const QString device = PathToQString(device_);
    failure_ = FailureOf(error, device);
    lastError_ = FromQString(port_->errorString());
    if (const QString group = QFileInfo(device).group(); failure_ == PortFailure::NotAllowed && !group.isEmpty())
        lastError_ += "; the group " + FromQString(group) + " may use it";
}

// Unplugged, or its other end is gone: whoever waits for it must not wait on.
void QtSerialPort::Lose()
{
    if (!IsOpen())
        return;
    Fail(QSerialPort::ResourceError);
    port_->close();
    if (onLost)
        onLost();
}

void QtSerialPort::Write(std::string_view bytes)
{
    if (IsOpen())
        port_->write(bytes.data(), static_cast<qint64>(bytes.size()));
}

std::size_t QtSerialPort::BytesWaiting() const
{
    return IsOpen() ? static_cast<std::size_t>(port_->bytesAvailable()) : 0;
}

std::string QtSerialPort::Read(std::size_t limit)
{
    if (!IsOpen())
        return {};
    return (limit == 0 ? port_->readAll() : port_->read(static_cast<qint64>(limit))).toStdString();
}

void QtSerialPort::DiscardInput()
{
    if (!IsOpen())
        return;
    port_->clear(QSerialPort::Input);
}

}  // namespace kelvora
