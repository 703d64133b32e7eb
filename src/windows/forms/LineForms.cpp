#include "windows/forms/LineForms.h"

#include "comms/FrameMeaning.h"
#include "comms/PortTrial.h"
#include "eeprom/IdentityCopy.h"
#include "eeprom/ModuleMeaning.h"
#include "eeprom/forms/frmEeprom.h"
#include "platform/qt/WindowParts.h"
#include "ports/forms/PortsDialog.h"
#include "ports/forms/frmPortSetup.h"

namespace kelvora {

LineForms::LineForms(const SetupDesk& desk, MachinePorts* machine, QWidget& window)
    : desk_(desk), machine_(machine), window_(window)
{
}

LineForms::~LineForms()
{
    delete monitorWindow_;
    StopWatching();
}

void LineForms::ShowPortSettings(PosCfg& settings)
{
    frmPortSetup form(desk_.Words(), desk_.lines, settings, &window_);
    connect(&form, &frmPortSetup::changed, this, [&] {
        desk_.defaults.SetBaudRate(settings.BaudRate());
        desk_.defaults.PortSettings = settings.PortSettings;
        emit portSettingsChanged();
    });
    form.exec();
}

void LineForms::ShowPorts()
{
    PortsDialog(desk_.Words(), desk_.lines, machine_->names, machine_->devices, &window_).exec();
}

void LineForms::ShowWizard(const PosCfg& settings)
{
    SerialPort* const port = desk_.lines.Port(settings.CommsPort);
    if (!port || desk_.operation.IsBusy())
        return;
    frmEeprom form({desk_.files, desk_.operation, desk_.notes, desk_.eventLoop}, settings, *port,
                   IdentityFolder(desk_.dataFolder), &window_);
    // The line monitor can be looked at beside it.
    form.setWindowModality(Qt::WindowModal);
    connect(&form, &frmEeprom::busyChanged, this, &LineForms::busyChanged);
    form.Watch([this, line = static_cast<int>(settings.CommsPort)](const LineTraffic& traffic) {
        if (monitor_)
            monitor_->Add(line, traffic, ModuleMeaning(traffic));
    });
    form.describeFailure = [this](const SerialPort& tried, PortFailure failure) {
        PortTrial trial = OutcomeOf(tried);
        trial.failure = failure;
        return DescribeTrial(desk_.Catalogue(), trial);
    };
    form.exec();
}

void LineForms::ShowMonitor()
{
    if (!monitorWindow_) {
        Watch();
        monitorWindow_ = new LineMonitorWindow(desk_.files, desk_.operation, desk_.eventLoop, *monitor_);
        connect(monitorWindow_, &QObject::destroyed, this, [this] {
            StopWatching();
            monitor_.reset();
        });
    }
    BringToFront(*monitorWindow_);
}

void LineForms::Watch()
{
    monitor_ = std::make_unique<LineMonitor>();
    for (std::size_t i = 0; i < desk_.lines.Links().size(); ++i)
        if (const auto& link = desk_.lines.Links().at(i))
            link->watcher = [&monitor = *monitor_,
                             line = static_cast<int>(i) + 1](const LineTraffic& traffic) {
                monitor.Add(line, traffic, FrameMeaning(traffic));
            };
}

void LineForms::StopWatching()
{
    for (const auto& link : desk_.lines.Links())
        if (link)
            link->watcher = nullptr;
}

void LineForms::Retranslate()
{
    if (monitorWindow_)
        monitorWindow_->Retranslate();
}

void LineForms::ShowBusy()
{
    if (monitorWindow_)
        monitorWindow_->ShowBusy();
}

}  // namespace kelvora
