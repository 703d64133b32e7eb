#include "platform/qt/QtSerialPort.h"

#include <QFileInfo>
#include <utility>

#include "platform/posix/DeviceHolder.h"
#include "platform/posix/TerminalDevice.h"
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

PortFailure SettingsRefusal(const std::string& device)
{
    return IsPseudoTerminal(device) ? PortFailure::PseudoTerminal : PortFailure::BadSettings;
}

PortFailure FailureOf(QSerialPort::SerialPortError error, const std::string& path)
{
    const QString device = PathToQString(path);
    if (IsNoTerminal(path))
        return PortFailure::NotSerial;
    switch (error) {
        case QSerialPort::NoError:
            return PortFailure::None;
        case QSerialPort::DeviceNotFoundError:
            return PortFailure::Missing;
        case QSerialPort::PermissionError:
            return RefusalOf(device);
        case QSerialPort::UnsupportedOperationError:
            return SettingsRefusal(path);
        default:
            return QFileInfo::exists(device) ? PortFailure::Other : PortFailure::Missing;
    }
}

// What Qt reports of an adapter that was pulled out differs from driver to driver.
bool EndsThePort(QSerialPort::SerialPortError error)
{
    switch (error) {
        case QSerialPort::ResourceError:
        case QSerialPort::ReadError:
        case QSerialPort::WriteError:
        case QSerialPort::DeviceNotFoundError:
        case QSerialPort::PermissionError:
            return true;
        default:
            return false;
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
                             if (EndsThePort(error))
                                 Lose();
                         });
    }
    if (IsLockedByNumber(device_)) {
        failure_ = PortFailure::InUse;
        lastError_ = "its lock file names a program that runs";
        return false;
    }
    if (!settings || !OpenDevice()) {
        Fail(settings ? FailureOf(port_->error(), device_) : PortFailure::BadSettings);
        return false;
    }
    if (!Apply(*settings)) {
        Fail(SettingsRefusal(device_));
        port_->close();
        return false;
    }
    failure_ = PortFailure::None;
    open_ = true;
    return true;
}

// A lock file that names nobody keeps Qt out for half a minute.
bool QtSerialPort::OpenDevice()
{
    return port_->open(QIODevice::ReadWrite) ||
           (port_->error() == QSerialPort::PermissionError && RemoveDeadLocks(device_) &&
            port_->open(QIODevice::ReadWrite));
}

void QtSerialPort::Close()
{
    if (std::exchange(open_, false))
        port_->close();
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

std::string QtSerialPort::AllowedGroup() const
{
    const QFileInfo file(PathToQString(device_));
    const bool groupMayUse = file.permission(QFileDevice::ReadGroup | QFileDevice::WriteGroup);
    const QString group = file.group();
    // Nobody is told to join the superuser's own group.
    return groupMayUse && group != QLatin1String("root") ? FromQString(group) : std::string();
}

std::string QtSerialPort::Holder() const
{
    return FindDeviceHolder(device_);
}

void QtSerialPort::Fail(PortFailure failure)
{
    failure_ = failure;
    lastError_ = FromQString(port_->errorString());
}

// Unplugged, or its other end is gone: whoever waits for it must not wait on. While it opens, its failures
// are Open's to tell.
void QtSerialPort::Lose()
{
    if (!open_)
        return;
    open_ = false;
    failure_ = QFileInfo::exists(PathToQString(device_)) ? PortFailure::Other : PortFailure::Missing;
    // The system's words are of its last call, which need not be the one that failed.
    lastError_ = "the device has hung up";
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
