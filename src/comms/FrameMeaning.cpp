#include "comms/FrameMeaning.h"

#include <cstddef>
#include <string_view>

#include "comms/LinkFrame.h"
#include "comms/Reply.h"

namespace kelvora {

namespace {

/// SOH and the exchange number stand before a body.
constexpr std::size_t BodyAt = 5;

constexpr std::string_view StageCommand = "0FB1";
constexpr std::string_view BlockCommand = "20";
constexpr std::size_t AddressLength = 4;
constexpr std::string_view DoneField = "0";

std::string BlockText(std::string_view address, std::size_t bytes)
{
    return ", address " + std::string(address) + ", " + std::to_string(bytes) + " bytes";
}

std::size_t DataSize(std::string_view escaped)
{
    const auto data = UnescapeData(escaped);
    return data ? data->size() : 0;
}

std::string DescribeCommand(std::string_view command)
{
    const std::string_view rest = command.substr(CommandName(command).size());
    if (!command.starts_with(StageCommand) || rest.size() <= AddressLength)
        return std::string(command);
    return std::string(StageCommand) +
           BlockText(rest.substr(0, AddressLength), DataSize(rest.substr(AddressLength)));
}

std::string DescribeReply(std::string_view reply)
{
    const std::string_view name = CommandName(reply);
    std::string text(name);
    const auto fields = ReplyFields(reply, name);
    if (!fields || fields->empty())
        return text + ", malformed";
    if (fields->front() != DoneField)
        text += ", status " + fields->front();
    if (name != BlockCommand || fields->size() < 3) {
        for (std::size_t i = 1; i < fields->size(); ++i)
            text += ", " + fields->at(i);
        return text;
    }
    std::size_t size = 0;
    for (std::size_t i = 2; i < fields->size(); ++i)
        size += DataSize(fields->at(i));
    return text + BlockText(fields->at(1), size);
}

std::string DescribeAnswer(std::string_view body)
{
    const std::string_view text = body.substr(1);
    switch (body.front()) {
        case 'M':
            return "reply " + DescribeReply(text);
        case 'E':
            return "command error: " + std::string(text);
        case 'R':
            return "command rejected: " + std::string(text);
        default:
            return {};
    }
}

// Between a bridge and its host the same texts go without frames, an answer with its tag.
std::string DescribeBridgeLine(const LineTraffic& traffic)
{
    if (traffic.direction == LineTraffic::Direction::Sent)
        return "command " + DescribeCommand(traffic.bytes);
    const std::string_view tag = traffic.bytes.substr(0, ReplyTag::Reply.size());
    const std::string text(traffic.bytes.substr(tag.size()));
    if (tag == ReplyTag::Reply)
        return "reply " + DescribeReply(text);
    if (tag == ReplyTag::Failed)
        return "command error: " + text;
    return (tag == ReplyTag::Rejected ? "command rejected: " : "no answer: ") + text;
}

}  // namespace

std::string FrameMeaning(const LineTraffic& traffic)
{
    if (traffic.damage != LineTraffic::Damage::None)
        return {};
    if (traffic.bytes == std::string_view(&LinkByte::Nak, 1))
        return "came damaged, send again";
    if (!traffic.bytes.starts_with(LinkByte::Soh))
        return DescribeBridgeLine(traffic);
    if (traffic.bytes.size() <= FrameOverhead)
        return {};
    const std::string_view body = traffic.bytes.substr(BodyAt, traffic.bytes.size() - FrameOverhead);
    return traffic.direction == LineTraffic::Direction::Sent ? "command " + DescribeCommand(body)
                                                             : DescribeAnswer(body);
}

}  // namespace kelvora
