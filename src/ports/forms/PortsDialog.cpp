#include "ports/forms/PortsDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>

#include "comms/PortTrial.h"
#include "platform/Encoding.h"
#include "platform/LineAddress.h"
#include "platform/qt/Announcement.h"
#include "platform/qt/ElidedLabel.h"
#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"

namespace kelvora {

namespace {

/// Room for a path by its adapter's name and serial number, in characters.
constexpr int PathWidth = 46;

/// Between a field and what stands below it, and between two ports, in pixels.
constexpr int RowSpacing = 2;
constexpr int PortSpacing = 8;

/// Lines that the result of a trial may take.
constexpr int ResultLines = 4;

// "FT232R USB UART, FTDI, A50285BI (/dev/ttyUSB0)"; a device without a name of its own is known by its node.
QString ListText(const SerialDevice& device)
{
    QStringList words;
    for (const std::string* word : {&device.name, &device.maker, &device.serialNumber})
        if (!word->empty())
            words << ToQString(*word);
    const QString node = PathToQString(device.node);
    return words.isEmpty() ? node : words.join(QStringLiteral(", ")) + QStringLiteral(" (") + node + ')';
}

}  // namespace

PortsDialog::PortsDialog(const Texts& texts, const Lines& lines, PortNames& names,
                         const SerialDevices& devices, QWidget* parent)
    : QDialog(parent),
      texts_(texts),
      lines_(lines),
      names_(names),
      devices_(devices),
      result_(TextLabel(QStringLiteral("Result"), {}, this))
{
    setObjectName(QStringLiteral("PortsDialog"));
    setWindowTitle(Text(Message::PortsTitle));
    auto* const hint = new QLabel(Text(Message::PortsHint) + ' ' + Text(Message::PortsNetworkHint), this);
    hint->setWordWrap(true);
    auto* const grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    grid->setVerticalSpacing(RowSpacing);
    for (std::size_t row = 0; row < PortCount; ++row)
        AddRow(*grid, static_cast<int>(row) + 1);

    // A command to type is better copied.
    result_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    result_->setMinimumHeight(ResultLines * fontMetrics().lineSpacing());
    result_->setAlignment(Qt::AlignTop | Qt::AlignLeft);

    // Made after the fields: before them in the order of the Tab key, it would lead back to its own buttons.
    buttons_ = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* const again = buttons_->addButton(Text(Message::PortsLookAgain), QDialogButtonBox::ResetRole);
    again->setObjectName(QStringLiteral("LookAgain"));
    again->setAutoDefault(false);
    connect(again, &QPushButton::clicked, this, [this] { FindDevices(); });
    connect(buttons_, &QDialogButtonBox::accepted, this, &PortsDialog::accept);
    connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(hint);
    layout->addLayout(grid);
    layout->addWidget(result_, 1);
    layout->addWidget(buttons_);
    FindDevices();
}

QString PortsDialog::Text(const MessageId& id) const
{
    return ToQString(texts_.Caption(id));
}

void PortsDialog::AddRow(QGridLayout& grid, int port)
{
    const auto index = static_cast<std::size_t>(port) - 1;
    Row& row = rows_.at(index);
    auto* const label = new QLabel(QStringLiteral("COM&%1").arg(port), this);
    row.device = new QComboBox(this);
    row.device->setObjectName(QStringLiteral("Device%1").arg(port));
    row.device->setEditable(true);
    row.device->setInsertPolicy(QComboBox::NoInsert);
    // A completed path is easily another device than the one that was meant.
    row.device->setCompleter(nullptr);
    row.device->setMinimumContentsLength(PathWidth);
    row.device->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    row.device->lineEdit()->setPlaceholderText(PathToQString(DefaultPortDevices().at(index)));
    const bool simulated = lines_.IsSimulated(static_cast<int>(index) + 1);
    row.device->setEditText(
        PathToQString(simulated ? lines_.AllPorts().at(index)->Device() : names_.Devices().at(index)));
    row.device->setEnabled(!names_.IsFixed(port) && !simulated);
    label->setBuddy(row.device);
    connect(row.device, &QComboBox::activated, this, [this, index](int chosen) {
        rows_.at(index).device->setEditText(PathToQString(found_.at(static_cast<std::size_t>(chosen)).path));
    });
    connect(row.device, &QComboBox::editTextChanged, this, [this] {
        // What was tried is no longer what stands there.
        result_->clear();
        ShowAdapters();
    });

    row.tryIt = new QPushButton(Text(Message::PortTry), this);
    row.tryIt->setObjectName(QStringLiteral("Try%1").arg(port));
    row.tryIt->setAccessibleName(Text(Message::PortTry) + QStringLiteral(" COM%1").arg(port));
    row.tryIt->setAutoDefault(false);
    connect(row.tryIt, &QPushButton::clicked, this, [this, port] { Try(port); });

    row.adapter = new ElidedLabel(this);
    // What stands behind a path must not widen the dialog under the mouse.
    row.adapter->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    row.adapter->setObjectName(QStringLiteral("Adapter%1").arg(port));
    row.adapter->setContentsMargins(0, 0, 0, PortSpacing);
    const int line = 2 * static_cast<int>(index);
    grid.addWidget(label, line, 0);
    grid.addWidget(row.device, line, 1);
    grid.addWidget(row.tryIt, line, 2);
    grid.addWidget(row.adapter, line + 1, 1, 1, 2);
}

void PortsDialog::FindDevices()
{
    found_ = devices_.List();
    for (const Row& row : rows_) {
        const QString typed = row.device->currentText();
        const QSignalBlocker quiet(row.device);
        row.device->clear();
        for (const SerialDevice& device : found_)
            row.device->addItem(ListText(device));
        row.device->setCurrentIndex(-1);
        row.device->setEditText(typed);
    }
    // What is said again is news.
    result_->clear();
    ShowNews(*result_, found_.empty() ? Text(Message::PortsNone) : QString());
    ShowAdapters();
}

const SerialDevice* PortsDialog::Find(const std::string& path) const
{
    const auto found = std::ranges::find_if(
        found_, [&](const SerialDevice& device) { return device.path == path || device.node == path; });
    return found == found_.end() ? nullptr : &*found;
}

std::string PortsDialog::DeviceIn(std::size_t row) const
{
    const std::string typed = PathFromQString(rows_.at(row).device->currentText().trimmed());
    return typed.empty() ? DefaultPortDevices().at(row) : typed;
}

QString PortsDialog::AdapterText(const std::string& path) const
{
    if (!IsLineDevice(path))
        return Text(Message::PortPathRefused);
    if (const auto address = ParseLineAddress(path))
        return Text(address->protocol == LineProtocol::Bridge ? Message::PortOnBridge
                                                              : Message::PortOnNetwork);
    const SerialDevice* const device = Find(path);
    if (!device)
        return Text(Message::PortNotListed);
    const QString text = ListText(*device);
    return text == PathToQString(path) ? Text(Message::PortNameless) : text;
}

// Under each field, what stands behind its path now. A path that cannot be one refuses OK.
void PortsDialog::ShowAdapters()
{
    bool allPaths = true;
    for (std::size_t i = 0; i < PortCount; ++i) {
        const bool isPath = IsLineDevice(DeviceIn(i));
        QString text = AdapterText(DeviceIn(i));
        if (names_.IsFixed(static_cast<int>(i) + 1))
            text += QStringLiteral(" - ") + Text(Message::PortFixed);
        if (lines_.IsSimulated(static_cast<int>(i) + 1))
            text = Text(Message::SimulatedLine);
        rows_.at(i).adapter->setText(text);
        rows_.at(i).adapter->setToolTip(text);
        rows_.at(i).tryIt->setEnabled(isPath && lines_.AllPorts().at(i) != nullptr);
        allPaths = allPaths && isPath;
    }
    buttons_->button(QDialogButtonBox::Ok)->setEnabled(allPaths);
}

void PortsDialog::Try(int port)
{
    const auto index = static_cast<std::size_t>(port) - 1;
    const std::string device = DeviceIn(index);
    result_->setText(ParseLineAddress(device) ? Text(Message::PortConnecting) : QString());
    // A line on the network takes its time, in which the dialog must stay as it is.
    trying_ = true;
    setEnabled(false);
    const PortTrial trial = TryDevice(*lines_.AllPorts().at(index), device);
    setEnabled(true);
    trying_ = false;
    rows_.at(index).tryIt->setFocus();
    const QString described = ToQString(DescribeTrial(texts_.Catalogue(), trial));
    ShowNews(*result_, QStringLiteral("COM%1: ").arg(port) +
                           QString(described).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
}

void PortsDialog::reject()
{
    if (!trying_)
        QDialog::reject();
}

void PortsDialog::accept()
{
    if (trying_)
        return;
    PortDevices devices;
    // Simulated devices stay where they are for this run, and the names behind them in the file.
    auto ports = lines_.AllPorts();
    for (std::size_t i = 0; i < PortCount; ++i) {
        const bool simulated = lines_.IsSimulated(static_cast<int>(i) + 1);
        devices.at(i) = simulated ? names_.Devices().at(i) : DeviceIn(i);
        if (simulated)
            ports.at(i) = nullptr;
    }
    names_.Take(devices);
    names_.ApplyTo(ports);
    if (names_.IsChanged())
        Keep();
    QDialog::accept();
}

void PortsDialog::Keep()
{
    if (names_.HasProblem() &&
        texts_.Show(Message::PortsFileReplace, YesNoStyle, names_.Problem(texts_.Catalogue())) != Answer::Yes)
        return;
    try {
        names_.Save();
    } catch (const FileError& error) {
        texts_.TellOf(Message::PortsNotKept, error);
    }
}

}  // namespace kelvora
