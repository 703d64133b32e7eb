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

MessageId PortFailureText(PortFailure failure)
{
    switch (failure) {
        case PortFailure::Missing:
            return Message::PortMissing;
        case PortFailure::NotSerial:
            return Message::PortNotSerial;
        case PortFailure::NotAllowed:
            return Message::PortNotAllowed;
        case PortFailure::InUse:
            return Message::PortInUse;
        case PortFailure::BadSettings:
            return Message::PortBadSettings;
        case PortFailure::PseudoTerminal:
            return Message::PortPseudoTerminal;
        case PortFailure::SevenBits:
            return Message::LineNeedsEightBits;
        case PortFailure::HostNotFound:
            return Message::PortHostNotFound;
        case PortFailure::Refused:
            return Message::PortRefused;
        case PortFailure::NoAnswer:
            return Message::PortNoAnswer;
        case PortFailure::NoSettings:
            return Message::PortNoSettings;
        case PortFailure::HungUp:
            return Message::PortHungUp;
        case PortFailure::Disconnected:
            return Message::PortDisconnected;
        case PortFailure::NoBridge:
            return Message::PortNoBridge;
        case PortFailure::FixedSettings:
            return Message::PortFixedSettings;
        case PortFailure::CommandsOnly:
            return Message::PortCommandsOnly;
        case PortFailure::GivenUp:
        case PortFailure::Other:
        case PortFailure::None:
            break;
    }
    return Message::PortOtherFailure;
}

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
    PortTrial trial{port.Device(),
                    port.IsOpen() ? PortFailure::InUse : port.Failure(),
                    port.LastError(),
                    port.Settings(),
                    {},
                    {}};
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
    if (trial.failure == PortFailure::None)
        return DescribeOpened(catalogue, trial);
    const MessageId text = PortFailureText(trial.failure);
    switch (trial.failure) {
        case PortFailure::NotAllowed:
            return catalogue.Caption(text) + "\r\n" + DescribeGroup(catalogue, trial.group);
        case PortFailure::InUse:
            return catalogue.Caption(text) +
                   (trial.holder.empty() ? "" : "\r\n" + DescribeHolder(catalogue, trial.holder));
        case PortFailure::BadSettings:
        case PortFailure::PseudoTerminal:
            return catalogue.Word(text) + trial.settings +
                   (ParseLineAddress(trial.device) ? "\r\n" + trial.error : std::string());
        case PortFailure::Disconnected:
            return catalogue.Caption(text) + "\r\n" + trial.error;
        case PortFailure::Other:
            return catalogue.Word(text) + trial.error;
        default:
            return catalogue.Caption(text);
    }
}

}  // namespace kelvora
