#include "platform/qt/QtSerialDevices.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSerialPortInfo>
#include <algorithm>

#include "platform/qt/Text.h"

namespace kelvora {

namespace {

// Links that bear an adapter's make and serial number: ttyUSB0 may be another one after the next plugging.
const QString LastingLinks = QStringLiteral("/dev/serial/by-id");

QHash<QString, QString> LinksByNode()
{
    QHash<QString, QString> links;
    const auto filters = QDir::Files | QDir::System | QDir::NoDotAndDotDot;
    for (const QFileInfo& link : QDir(LastingLinks).entryInfoList(filters, QDir::Name))
        if (const QString node = link.canonicalFilePath(); !node.isEmpty() && !links.contains(node))
            links.insert(node, link.absoluteFilePath());
    return links;
}

}  // namespace

std::vector<SerialDevice> QtSerialDevices::List() const
{
    const QHash<QString, QString> links = LinksByNode();
    std::vector<SerialDevice> devices;
    for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts()) {
        const QString node = port.systemLocation();
        devices.push_back({PathFromQString(links.value(node, node)), PathFromQString(node),
                           FromQString(port.description().simplified()),
                           FromQString(port.manufacturer().simplified()),
                           FromQString(port.serialNumber().simplified())});
    }
    std::ranges::sort(devices, {}, &SerialDevice::node);
    return devices;
}

}  // namespace kelvora
