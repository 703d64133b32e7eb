// The dialog "Serial Ports": which device stands behind each of COM1 to COM4, chosen by the name that an
// adapter gives itself or by a typed path, and tried. OK puts the names in force and keeps them in ports.ini.
#pragma once

#include <QDialog>
#include <array>
#include <vector>

#include "catalogue/Texts.h"
#include "platform/SerialDevices.h"
#include "ports/Lines.h"
#include "ports/PortNames.h"

class QComboBox;
class QDialogButtonBox;
class QGridLayout;
class QLabel;
class QPushButton;

namespace kelvora {

class ElidedLabel;

class PortsDialog final : public QDialog {
public:
    /// All outlive the dialog. Tries devices through the lines' ports, which get the devices in force on
    /// OK.
    PortsDialog(const Texts& texts, const Lines& lines, PortNames& names, const SerialDevices& devices,
                QWidget* parent);

    void accept() override;
    void reject() override;

private:
    struct Row {
        QComboBox* device;
        ElidedLabel* adapter;
        QPushButton* tryIt;
    };

    void AddRow(QGridLayout& grid, int port);
    void FindDevices();
    void ShowAdapters();
    QString AdapterText(const std::string& path) const;
    void Try(int port);
    void Keep();
    const SerialDevice* Find(const std::string& path) const;
    std::string DeviceIn(std::size_t row) const;
    QString Text(const MessageId& id) const;

    const Texts& texts_;
    const Lines& lines_;
    PortNames& names_;
    const SerialDevices& devices_;
    std::vector<SerialDevice> found_;
    std::array<Row, PortCount> rows_{};
    QLabel* result_;
    QDialogButtonBox* buttons_ = nullptr;
    bool trying_ = false;
};

}  // namespace kelvora
