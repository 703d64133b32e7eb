#include "comms/PortTrial.h"

namespace kelvora {

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
            return catalogue.Caption(Message::PortInUse) +
                   (trial.holder.empty() ? "" : "\r\n" + DescribeHolder(catalogue, trial.holder));
        case PortFailure::BadSettings:
            return catalogue.Word(Message::PortBadSettings) + trial.settings;
        case PortFailure::SevenBits:
        case PortFailure::Other:
            break;
    }
    return catalogue.Word(Message::PortOtherFailure) + trial.error;
}

}  // namespace kelvora
