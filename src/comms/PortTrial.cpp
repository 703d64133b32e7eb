#include "comms/PortTrial.h"

#include "platform/LineAddress.h"

namespace kelvora {

namespace {

std::string DescribeOpened(const MessageCatalogue& catalogue, const PortTrial& trial)
{
    if (IsBridge(trial.device))
        return catalogue.Caption(Message::PortBridgeAnswers);
    return catalogue.Caption(trial.fixedSettings ? Message::PortAnswersFixed : Message::PortOpens);
}

}  // namespace

std::string DescribeGroup(const MessageCatalogue& catalogue, const std::string& group)
{
    if (group.empty())
        return catalogue.Caption(Message::PortNoGroup);
    return catalogue.Word(Message::PortGroup) + group + ".\r\n" + catalogue.Caption(Message::PortJoinGroup) +
           "\r\nsudo usermod -aG " + group + " $USER";
}

std::string DescribeHolder(const MessageCatalogue& catalogue, const std::string& holder)
{
    return catalogue.Word(Message::PortHolder) + holder;
}

PortTrial OutcomeOf(const SerialPort& port)
{
    PortTrial trial{
        port.Device(), port.IsOpen() ? PortFailure::InUse : port.Failure(), {}, port.Settings(), {}, {}};
    if (trial.failure != PortFailure::None && !port.IsOpen())
        trial.error = port.LastError();
    if (trial.failure == PortFailure::NotAllowed)
        trial.group = port.AllowedGroup();
    else if (trial.failure == PortFailure::InUse)
        trial.holder = port.Holder();
    return trial;
}

PortTrial TryDevice(SerialPort& port, const std::string& device)
{
    if (port.IsOpen())
        return OutcomeOf(port);
    const std::string own = port.Device();
    port.SetDevice(device);
    const bool fixedSettings = port.Open() && port.HasFixedSettings();
    port.Close();
    PortTrial trial = OutcomeOf(port);
    trial.fixedSettings = fixedSettings;
    port.SetDevice(own);
    return trial;
}

std::string DescribeTrial(const MessageCatalogue& catalogue, const PortTrial& trial)
{
    switch (trial.failure) {
        case PortFailure::None:
            return DescribeOpened(catalogue, trial);
        case PortFailure::Missing:
            return catalogue.Caption(Message::PortMissing);
        case PortFailure::NotAllowed:
            return catalogue.Caption(Message::PortNotAllowed) + "\r\n" +
                   DescribeGroup(catalogue, trial.group);
        case PortFailure::InUse:
            return catalogue.Caption(Message::PortInUse) +
                   (trial.holder.empty() ? "" : "\r\n" + DescribeHolder(catalogue, trial.holder));
        case PortFailure::BadSettings:
            return catalogue.Word(Message::PortBadSettings) + trial.settings;
        case PortFailure::HostNotFound:
            return catalogue.Caption(Message::PortHostNotFound);
        case PortFailure::Refused:
            return catalogue.Caption(Message::PortRefused);
        case PortFailure::NoAnswer:
            return catalogue.Caption(Message::PortNoAnswer);
        case PortFailure::NoSettings:
            return catalogue.Caption(Message::PortNoSettings);
        case PortFailure::FixedSettings:
            return catalogue.Caption(Message::PortFixedSettings);
        case PortFailure::CommandsOnly:
            return catalogue.Caption(Message::PortCommandsOnly);
        case PortFailure::Disconnected:
            return catalogue.Caption(Message::PortDisconnected) + "\r\n" + trial.error;
        case PortFailure::SevenBits:
        case PortFailure::Other:
            break;
    }
    return catalogue.Word(Message::PortOtherFailure) + trial.error;
}

}  // namespace kelvora
