#include "app/forms/LineForms.h"

#include "comms/FrameMeaning.h"
#include "comms/PortTrial.h"
#include "comms/forms/PortsDialog.h"
#include "comms/forms/frmPortSetup.h"
#include "eeprom/ModuleMeaning.h"
#include "eeprom/forms/frmEeprom.h"

namespace kelvora {

LineForms::LineForms(Program& program, MachinePorts* machine, QWidget& window)
    : program_(program), machine_(machine), window_(window)
{
}

LineForms::~LineForms()
{
    delete monitorWindow_;
    for (const auto& channel : program_.channels)
        if (channel)
            channel->watcher = nullptr;
}

void LineForms::ShowPortSettings(PosCfg& settings, const std::function<void()>& onChange)
{
    frmPortSetup form(program_, settings, &window_);
    form.onChange = [&] {
        program_.main.SetBaudRate(settings.BaudRate());
        program_.main.PortSettings = settings.PortSettings;
        onChange();
    };
    form.exec();
}

void LineForms::ShowPorts()
{
    PortsDialog(program_, machine_->names, machine_->devices, &window_).exec();
}

void LineForms::ShowWizard(const PosCfg& settings, const std::function<void()>& onBusy)
{
    SerialPort* const port = program_.world.ports.at(static_cast<std::size_t>(settings.CommsPort) - 1);
    if (!port || program_.busy)
        return;
    frmEeprom form(program_, settings, *port, program_.dataFolder + "/identities", &window_);
    // The line monitor can be looked at beside it.
    form.setWindowModality(Qt::WindowModal);
    form.onBusy = [this, onBusy] {
        onBusy();
        ShowBusy();
    };
    form.Watch([this, line = static_cast<int>(settings.CommsPort)](const LineTraffic& traffic) {
        if (monitor_)
            monitor_->Add(line, traffic, ModuleMeaning(traffic));
    });
    form.describeFailure = [this](const SerialPort& tried, PortFailure failure) {
        PortTrial trial = OutcomeOf(tried);
        trial.failure = failure;
        return DescribeTrial(program_.catalogue, trial);
    };
    form.exec();
}

void LineForms::ShowMonitor()
{
    if (!monitorWindow_) {
        Watch();
        monitorWindow_ = new LineMonitorWindow(program_, *monitor_);
        QObject::connect(monitorWindow_, &QObject::destroyed, &window_, [this] {
            for (const auto& channel : program_.channels)
                if (channel)
                    channel->watcher = nullptr;
            monitor_.reset();
        });
    }
    monitorWindow_->show();
    monitorWindow_->raise();
    monitorWindow_->activateWindow();
}

void LineForms::Watch()
{
    monitor_ = std::make_unique<LineMonitor>();
    for (std::size_t i = 0; i < program_.channels.size(); ++i)
        if (const auto& channel = program_.channels.at(i))
            channel->watcher = [&monitor = *monitor_,
                                line = static_cast<int>(i) + 1](const LineTraffic& traffic) {
                monitor.Add(line, traffic, FrameMeaning(traffic));
            };
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
