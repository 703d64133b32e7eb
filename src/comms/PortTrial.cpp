#include "comms/PortTrial.h"

namespace kelvora {

std::string DescribeGroup(const MessageCatalogue& catalogue, const std::string& group)
{
    if (group.empty())
        return catalogue.Caption(Message::PortNoGroup);
    return catalogue.Word(Message::PortGroup) + group + ".\r\n" + catalogue.Caption(Message::PortJoinGroup) +
           "\r\nsudo usermod -aG " + group + " $USER";
}

PortTrial OutcomeOf(const SerialPort& port)
{
    const PortFailure failure = port.Failure();
    return {port.Device(), failure, failure == PortFailure::None ? std::string() : port.LastError(),
            port.Settings(), failure == PortFailure::NotAllowed ? port.AllowedGroup() : std::string()};
}

PortTrial TryDevice(SerialPort& port, const std::string& device)
{
    if (port.IsOpen())
        return {device, PortFailure::InUse, {}, port.Settings(), {}};
    const std::string own = port.Device();
    port.SetDevice(device);
    if (port.Open())
        port.Close();
    PortTrial trial = OutcomeOf(port);
    port.SetDevice(own);
    return trial;
}

std::string DescribeTrial(const MessageCatalogue& catalogue, const PortTrial& trial)
{
    switch (trial.failure) {
        case PortFailure::None:
            return catalogue.Caption(Message::PortOpens);
        case PortFailure::Missing:
            return catalogue.Caption(Message::PortMissing);
        case PortFailure::NotAllowed:
            return catalogue.Caption(Message::PortNotAllowed) + "\r\n" +
                   DescribeGroup(catalogue, trial.group);
        case PortFailure::InUse:
            return catalogue.Caption(Message::PortInUse);
        case PortFailure::BadSettings:
            return catalogue.Word(Message::PortBadSettings) + trial.settings;
        case PortFailure::SevenBits:
        case PortFailure::Other:
            break;
    }
    return catalogue.Word(Message::PortOtherFailure) + trial.error;
}

}  // namespace kelvora
