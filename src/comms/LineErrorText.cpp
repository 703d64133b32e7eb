#include "comms/LineErrorText.h"

#include <array>

#include "catalogue/OneLineText.h"
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

// Of a line that is lost: others are told as a port that went away.
bool IsToldAsItIs(PortFailure failure)
{
    return failure == PortFailure::Disconnected || failure == PortFailure::NoBridge;
}

// What another machine says may hold what moves a terminal's cursor or colours its text.
constexpr char ForControls = '.';

// In the order of LineWarning::Step.
constexpr std::array WarningTexts{Message::WarnFlashNotClosed, Message::WarnNotReleased,
                                  Message::WarnTransferNotEnded, Message::ModeNotSet};
static_assert(WarningTexts.size() == static_cast<std::size_t>(LineWarning::Step::Last) + 1);

}  // namespace

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
    else if (result.outcome == LineOutcome::Failed && !IsToldAsItIs(failure.port))
        text.message = Message::PortLost;
    if (!failure.detail.empty())
        text.extra += "\r\n" + WithoutControls(failure.detail, ForControls);
    if (!failure.holder.empty())
        text.extra += "\r\n" + DescribeHolder(catalogue, failure.holder);
    if (failure.fixedSettings)
        text.extra += "\r\n" + catalogue.Word(Message::LineSettingsFixed) + target.settings;
    if (result.outcome == LineOutcome::NoPort && failure.port == PortFailure::NotAllowed)
        text.extra += "\r\n" + DescribeGroup(catalogue, failure.group);
    return text;
}

std::vector<std::string> WarningLines(const MessageCatalogue& catalogue, const LineWarnings& warnings)
{
    std::vector<std::string> lines;
    for (const LineWarning& warning : warnings) {
        lines.push_back(catalogue.Caption(WarningTexts.at(static_cast<std::size_t>(warning.step))));
        if (!warning.detail.empty())
            lines.back() += " (" + WithoutControls(warning.detail, ForControls) + ")";
    }
    return lines;
}

}  // namespace kelvora
