#include "app/LineErrorText.h"

#include <array>

#include "comms/PortTrial.h"
#include "comms/Reply.h"
#include "platform/Encoding.h"
#include "platform/PortName.h"

namespace kelvora {

namespace {

constexpr std::array ReplyTexts{
    Message::LineFailed,    Message::LineNoDevices, Message::LineMalformed, Message::LineGaveUp,
    Message::LineGivenTime, Message::LineStatus999, Message::LineRejected,  Message::LineStatus5,
    Message::LineStatus3,   Message::LineUndefined,
};

// The messages bear the numbers' offsets.
MessageId ReplyErrorText(std::uint32_t number)
{
    for (const MessageId& text : ReplyTexts)
        if (ReplyErrorNumber::Base + static_cast<std::uint32_t>(text.id) == number)
            return text;
    return Message::LineUndefined;
}

}  // namespace

MessageId PortFailureText(PortFailure failure)
{
    switch (failure) {
        case PortFailure::Missing:
            return Message::PortMissing;
        case PortFailure::NotAllowed:
            return Message::PortNotAllowed;
        case PortFailure::InUse:
            return Message::PortInUse;
        case PortFailure::BadSettings:
            return Message::PortBadSettings;
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
        case PortFailure::Disconnected:
            return Message::PortDisconnected;
        case PortFailure::FixedSettings:
            return Message::PortFixedSettings;
        case PortFailure::CommandsOnly:
            return Message::PortCommandsOnly;
        case PortFailure::Other:
        case PortFailure::None:
            break;
    }
    return Message::PortOtherFailure;
}

LineErrorText DescribeLineFailure(const MessageCatalogue& catalogue, const LineTarget& target,
                                  const LineResult& result)
{
    const LineFailure& failure = result.failure;
    LineErrorText text{PortFailureText(failure.port), PortName(target.line)};
    if (!failure.device.empty())
        text.extra += " (" + TextFromPath(failure.device) + ")";
    text.extra += ": " + target.settings;
    if (result.outcome == LineOutcome::Failed && failure.port == PortFailure::None)
        text.message = ReplyErrorText(failure.number);
    else if (result.outcome == LineOutcome::Failed && failure.port != PortFailure::Disconnected)
        text.message = Message::PortLost;
    if (!failure.detail.empty())
        text.extra += "\r\n" + failure.detail;
    if (!failure.holder.empty())
        text.extra += "\r\n" + DescribeHolder(catalogue, failure.holder);
    if (failure.fixedSettings)
        text.extra += "\r\n" + catalogue.Word(Message::LineSettingsFixed) + target.settings;
    if (result.outcome == LineOutcome::NoPort && failure.port == PortFailure::NotAllowed)
        text.extra += "\r\n" + DescribeGroup(catalogue, failure.group);
    return text;
}

}  // namespace kelvora
