#include "network/ComPortSession.h"

#include <algorithm>
#include <optional>

namespace kelvora {

namespace {

/// In the order of the session's lists.
constexpr std::array<char, 3> Options{TelnetOption::Binary, TelnetOption::NoGoAhead, TelnetOption::ComPort};

constexpr char FirstSetting = 1;
constexpr char Control = 5;
constexpr char Discard = 12;
constexpr char AnswerOffset = 100;

constexpr char NoFlowControl = 1;
constexpr char DtrOn = 8;
constexpr char RtsOn = 11;
constexpr char WhatWasReceived = 1;

constexpr std::string_view Parities = "noe";

std::optional<std::size_t> PlaceOf(char option)
{
    const auto* const found = std::ranges::find(Options, option);
    return found == Options.end() ? std::nullopt
                                  : std::optional(static_cast<std::size_t>(found - Options.begin()));
}

std::string Request(char code, std::string_view value)
{
    return TelnetSubnegotiation(TelnetOption::ComPort, code + std::string(value));
}

std::string SpeedValue(int baud)
{
    std::string value;
    for (int shift = 24; shift >= 0; shift -= 8)
        value += static_cast<char>((static_cast<unsigned>(baud) >> static_cast<unsigned>(shift)) & 0xFFU);
    return value;
}

std::string Number(std::string_view value)
{
    unsigned long number = 0;
    for (const char byte : value)
        number = number << 8U | static_cast<unsigned char>(byte);
    return std::to_string(number);
}

}  // namespace

std::string ComPortSession::Begin()
{
    using namespace TelnetByte;
    return TelnetCommand(Will, TelnetOption::Binary) + TelnetCommand(Do, TelnetOption::Binary) +
           TelnetCommand(Will, TelnetOption::NoGoAhead) + TelnetCommand(Do, TelnetOption::NoGoAhead) +
           TelnetCommand(Will, TelnetOption::ComPort);
}

ComPortSession::Taken ComPortSession::Take(std::string_view bytes)
{
    using enum TelnetReceiver::Event;
    Taken taken;
    for (const char byte : bytes) {
        switch (receiver_.Take(byte)) {
            case Data:
                taken.data += byte;
                break;
            case Negotiation:
                taken.answer += Negotiate();
                break;
            case Subnegotiation:
                TakeAnswer();
                break;
            case None:
                break;
        }
    }
    return taken;
}

// An answer to a wish, and what stands already, need none: two that answered each other would never end.
std::string ComPortSession::Negotiate()
{
    using namespace TelnetByte;
    const char verb = receiver_.Verb();
    const char option = receiver_.Option();
    const bool ofOurs = verb == Do || verb == Dont;
    const bool agrees = verb == Do || verb == Will;
    const auto place = PlaceOf(option);
    if (!place)
        return agrees ? TelnetCommand(ofOurs ? Wont : Dont, option) : std::string();
    if (!Settle((ofOurs ? weSend_ : theySend_).at(*place), agrees))
        return {};
    if (ofOurs)
        return TelnetCommand(agrees ? Will : Wont, option);
    return TelnetCommand(agrees ? Do : Dont, option);
}

// Whether the other side must be told.
bool ComPortSession::Settle(Wish& wish, bool agrees)
{
    const Wish before = wish;
    wish = agrees ? Wish::Agreed : Wish::Declined;
    const bool stoodAlready = before == wish || (before == Wish::Unspoken && !agrees);
    return before != Wish::Open && !stoodAlready;
}

bool ComPortSession::IsAgreed() const
{
    return !std::ranges::count(weSend_, Wish::Open) && !std::ranges::count(theySend_, Wish::Open);
}

std::string ComPortSession::Ask(const SerialSettings& settings)
{
    asked_ = {SpeedValue(settings.baud), std::string(1, static_cast<char>(settings.dataBits)),
              std::string(1, static_cast<char>(1 + Parities.find(settings.parity))),
              std::string(1, static_cast<char>(settings.stopBits))};
    answered_ = {};
    std::string requests;
    for (std::size_t i = 0; i < SettingCount; ++i)
        requests += Request(static_cast<char>(FirstSetting + i), asked_.at(i));
    return requests;
}

void ComPortSession::TakeAnswer()
{
    const std::string& content = receiver_.Content();
    if (receiver_.Option() != TelnetOption::ComPort || content.empty())
        return;
    const auto place =
        static_cast<std::size_t>(static_cast<unsigned char>(content.front() - AnswerOffset - FirstSetting));
    // A server also tells of changes on its own account.
    if (place < SettingCount && content.size() == asked_.at(place).size() + 1)
        answered_.at(place) = content.substr(1);
}

ComPortSession::Settings ComPortSession::Outcome() const
{
    if (asked_.front().empty())
        return Settings::None;
    if (std::ranges::count(answered_, std::string()))
        return Settings::Asked;
    return answered_ == asked_ ? Settings::InForce : Settings::Refused;
}

std::string ComPortSession::Kept() const
{
    const auto parity = static_cast<std::size_t>(static_cast<unsigned char>(answered_[2].front())) - 1;
    const char letter = parity < Parities.size() ? Parities[parity] : '?';
    return Number(answered_[0]) + ',' + letter + ',' + Number(answered_[1]) + ',' + Number(answered_[3]);
}

std::string ComPortSession::RaiseControlLines()
{
    std::string requests;
    for (const char value : {NoFlowControl, DtrOn, RtsOn})
        requests += Request(Control, std::string_view(&value, 1));
    return requests;
}

std::string ComPortSession::DiscardReceived()
{
    return Request(Discard, std::string_view(&WhatWasReceived, 1));
}

}  // namespace kelvora
