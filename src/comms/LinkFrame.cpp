#include "comms/LinkFrame.h"

#include "comms/Crc.h"
#include "platform/NumberText.h"

namespace kelvora {

namespace {

constexpr int ExchangeDigits = 4;
constexpr int FrameCrcDigits = 4;
constexpr char EscapeFlip = 0x40;

bool NeedsEscape(char byte)
{
    switch (byte) {
        case LinkByte::Soh:
        case LinkByte::Etx:
        case LinkByte::LineFeed:
        case LinkByte::CarriageReturn:
        case LinkByte::Nak:
        case LinkByte::Escape:
            return true;
        default:
            return false;
    }
}

// Upper-case digits alone.
std::optional<std::uint16_t> HexNumber(std::string_view digits)
{
    if (digits.find_first_not_of("0123456789ABCDEF") != std::string_view::npos)
        return std::nullopt;
    return WholeNumber<std::uint16_t>(digits, 16);
}

}  // namespace

std::string BuildFrame(const LinkFrame& frame)
{
    std::string text = HexText(frame.exchange, ExchangeDigits) + frame.body;
    const std::string crc = HexText(Crc16(text), FrameCrcDigits);
    text.insert(text.begin(), LinkByte::Soh);
    return text + LinkByte::Etx + crc;
}

std::string EscapeData(std::string_view data)
{
    std::string escaped;
    escaped.reserve(data.size() + data.size() / 16);
    for (const char byte : data) {
        if (NeedsEscape(byte)) {
            escaped += LinkByte::Escape;
            escaped += static_cast<char>(byte ^ EscapeFlip);
        } else {
            escaped += byte;
        }
    }
    return escaped;
}

std::optional<std::string> UnescapeData(std::string_view escaped)
{
    std::string data;
    data.reserve(escaped.size());
    for (std::size_t i = 0; i < escaped.size(); ++i) {
        if (!NeedsEscape(escaped[i])) {
            data += escaped[i];
            continue;
        }
        if (escaped[i] != LinkByte::Escape || ++i == escaped.size())
            return std::nullopt;
        const char byte = static_cast<char>(escaped[i] ^ EscapeFlip);
        if (!NeedsEscape(byte))
            return std::nullopt;
        data += byte;
    }
    return data;
}

FrameReceiver::Event FrameReceiver::Take(char byte)
{
    if (reported_) {
        bytes_.clear();
        reported_ = false;
    }
    if (byte == LinkByte::Soh) {
        // Whatever was under way is lost: its sender has begun anew.
        bytes_.assign(1, byte);
        reported_ = false;
        state_ = State::Body;
        damaged_ = false;
        return Event::None;
    }
    if (bytes_.size() < LongestFrame)
        bytes_ += byte;
    switch (state_) {
        case State::Between:
            return byte == LinkByte::Nak ? Report(Event::Nak) : Event::None;
        case State::Body:
            if (byte == LinkByte::Etx) {
                state_ = State::Crc;
                etxAt_ = bytes_.size() - 1;
            } else if (byte == LinkByte::Nak || byte == LinkByte::LineFeed ||
                       byte == LinkByte::CarriageReturn) {
                damaged_ = true;
            }
            break;
        case State::Crc:
            if (bytes_.size() == etxAt_ + 1 + FrameCrcDigits)
                return Report(Judge());
    }
    return bytes_.size() < LongestFrame ? Event::None : Report(Event::Damage);
}

void FrameReceiver::Forget()
{
    state_ = State::Between;
    bytes_.clear();
}

FrameReceiver::Event FrameReceiver::Report(Event event)
{
    state_ = State::Between;
    reported_ = true;
    return event;
}

FrameReceiver::Event FrameReceiver::Judge()
{
    const std::string_view bytes(bytes_);
    const std::string_view checked = bytes.substr(1, etxAt_ - 1);
    const auto crc = HexNumber(bytes.substr(etxAt_ + 1));
    if (damaged_ || checked.size() < ExchangeDigits || !crc || *crc != Crc16(checked))
        return Event::Damage;
    const auto exchange = HexNumber(checked.substr(0, ExchangeDigits));
    if (!exchange)
        return Event::Damage;
    frame_.exchange = *exchange;
    frame_.body = checked.substr(ExchangeDigits);
    return Event::Frame;
}

}  // namespace kelvora
