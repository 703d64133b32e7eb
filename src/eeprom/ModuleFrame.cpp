#include "eeprom/ModuleFrame.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kelvora {

namespace {

using namespace ProtocolCharacter;

constexpr std::array<std::pair<std::int16_t, std::string_view>, 10> ErrorTexts{{
    {CommsErrorCode::NoResponse, "No response from MID"},
    {CommsErrorCode::CorruptedPacket, "corrupted data packet received"},
    {CommsErrorCode::InvalidPacket, "invalid data packet received"},
    {CommsErrorCode::Checksum, "checksum error on received message"},
    {CommsErrorCode::NoResponseToFrame, "No response from MID"},
    {CommsErrorCode::NotReady, "Message not sent: DC1 not received from MID"},
    {CommsErrorCode::IllegalCharacter, "Message not sent: illegal protocol character received from MID"},
    {CommsErrorCode::NakLrc, "MID NAK response indicates LRC error"},
    {CommsErrorCode::NakEtx, "MID NAK response indicates ETX error"},
    {CommsErrorCode::NakSlow, "MID NAK response indicates host too slow"},
}};

bool IsWhole(std::string_view frame)
{
    const std::size_t length = frame.size() - ModuleFrameOverhead;
    return frame[0] == STX && static_cast<unsigned char>(frame[1]) == length && frame.back() == ETX;
}

}  // namespace

std::string_view CommsErrorText(std::int16_t code)
{
    const auto* const found = std::ranges::find(ErrorTexts, code, &decltype(ErrorTexts)::value_type::first);
    return found != ErrorTexts.end() ? found->second : "unknown system error encountered";
}

std::uint8_t LRC(std::string_view bytes)
{
    std::uint8_t sum = 0;
    for (const char byte : bytes)
        sum = static_cast<std::uint8_t>(sum ^ static_cast<std::uint8_t>(byte));
    return sum;
}

std::string BuildModuleFrame(std::string_view data)
{
    std::string frame{STX, static_cast<char>(data.size())};
    frame.append(data);
    frame += static_cast<char>(LRC(data));
    frame += ETX;
    return frame;
}

std::int16_t JudgeHandshake(std::string_view answer)
{
    if (answer.empty())
        return CommsErrorCode::NoResponse;
    if (answer.front() != DC1)
        return CommsErrorCode::NotReady;
    if (answer.size() == 1)
        return CommsErrorCode::None;
    // The module's rule as it stands, although a first byte that is DC1 is never NAK.
    return answer.front() == NAK ? CommsErrorCode::NakSlow : CommsErrorCode::IllegalCharacter;
}

std::int16_t JudgeAcknowledgement(std::string_view answer)
{
    if (answer.empty())
        return CommsErrorCode::NoResponse;
    if (answer.front() == NAK)
        return CommsErrorCode::NakLrc;
    if (answer.front() != ACK)
        return CommsErrorCode::IllegalCharacter;
    if (answer.size() == 1 || answer[1] == ACK)
        return CommsErrorCode::None;
    return answer[1] == NAK ? CommsErrorCode::NakEtx : CommsErrorCode::IllegalCharacter;
}

FramedReply JudgeReply(std::string_view received)
{
    if (received.size() <= ModuleFrameOverhead || !IsWhole(received))
        return {{}, CommsErrorCode::CorruptedPacket};
    const std::string_view data = received.substr(2, received.size() - ModuleFrameOverhead);
    const bool intact = LRC(data) == static_cast<std::uint8_t>(received[received.size() - 2]);
    return {std::string(data), intact ? CommsErrorCode::None : CommsErrorCode::Checksum};
}

}  // namespace kelvora
