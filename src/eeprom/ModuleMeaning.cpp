#include "eeprom/ModuleMeaning.h"

#include <array>
#include <string_view>
#include <utility>

#include "eeprom/ModuleFrame.h"
#include "eeprom/ModuleRequest.h"
#include "platform/NumberText.h"

namespace kelvora {

namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 6> Signals{{
    {"\x05", "enquiry"},
    {"\x11", "ready"},
    {"\x06", "acknowledged"},
    {"\x06\x06", "acknowledged"},
    {"\x15", "refused, wrong LRC"},
    {"\x06\x15", "refused, wrong ETX"},
}};

std::string PlaceText(std::string_view data)
{
    std::string place = HexBytes(data.substr(RequestHeadLength, RequestPlaceEnd - RequestHeadLength));
    std::erase(place, ' ');
    return ", EEPROM " + place;
}

std::string DescribeRequest(std::string_view data)
{
    if (data.size() < RequestHeadLength)
        return {};
    const std::string address = " address " + std::to_string(static_cast<unsigned char>(data[0]));
    const char command = data[1];
    if (command == ModuleCommand::Identify)
        return "identify" + address;
    if (data.size() <= RequestPlaceEnd)
        return {};
    if (command == ModuleCommand::Read)
        return "read" + address + PlaceText(data) + ", " +
               std::to_string(static_cast<unsigned char>(data[RequestPlaceEnd])) + " bytes";
    if (command == ModuleCommand::Write)
        return "write" + address + PlaceText(data) + ": " + HexBytes(data.substr(RequestPlaceEnd));
    return {};
}

std::string DescribeReply(std::string_view data)
{
    if (data.size() == IdentifyLength)
        return "reply, identification " + HexBytes(data);
    if (data.size() == ReadLength)
        return "reply, EEPROM " + HexBytes(data.substr(ReadHeadLength));
    return "reply, " + std::to_string(data.size()) + " bytes";
}

}  // namespace

std::string ModuleMeaning(const LineTraffic& traffic)
{
    if (traffic.damage != LineTraffic::Damage::None)
        return {};
    for (const auto& [bytes, meaning] : Signals)
        if (traffic.bytes == bytes)
            return std::string(meaning);
    const FramedReply frame = JudgeReply(traffic.bytes);
    if (frame.error != CommsErrorCode::None)
        return {};
    return traffic.direction == LineTraffic::Direction::Sent ? DescribeRequest(frame.data)
                                                             : DescribeReply(frame.data);
}

}  // namespace kelvora
