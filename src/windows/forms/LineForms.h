// The windows about lines: port settings, which device stands behind which port, and the line monitor.
#pragma once

#include <QObject>
#include <QPointer>
#include <memory>

#include "comms/LineMonitor.h"
#include "comms/forms/LineMonitorWindow.h"
#include "layout/SetupDesk.h"
#include "platform/SerialDevices.h"
#include "ports/PortNames.h"

class QWidget;

namespace kelvora {

/// Which devices there are, and which of them stand behind COM1 to COM4. Both outlive those who use them.
struct MachinePorts {
    PortNames& names;
    const SerialDevices& devices;
};

class LineForms final : public QObject {
    Q_OBJECT

public:
    /// All outlive the object. Without `machine` there is no choice of ports.
    LineForms(const SetupDesk& desk, MachinePorts* machine, QWidget& window);
    ~LineForms() override;

    /// Edits the port settings of a setup window. They become those of the next window.
    void ShowPortSettings(PosCfg& settings);

    bool HasPorts() const { return machine_ != nullptr; }
    void ShowPorts();

    /// Opens the wizard that gives the modules of that line their identities.
    void ShowWizard(const PosCfg& settings);

    /// Opens the line monitor, or brings it to the front. Nothing is watched before it is opened.
    void ShowMonitor();

    void Retranslate();

    /// A device operation has begun or ended.
    void ShowBusy();

signals:
    /// A port setting was chosen.
    void portSettingsChanged();

    /// A line has become the wizard's own, or is no longer.
    void busyChanged();

private:
    void Watch();
    void StopWatching();

    const SetupDesk& desk_;
    MachinePorts* machine_;
    QWidget& window_;
    std::unique_ptr<LineMonitor> monitor_;
    QPointer<LineMonitorWindow> monitorWindow_;
};

}  // namespace kelvora
