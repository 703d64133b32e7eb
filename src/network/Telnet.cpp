#include "network/Telnet.h"

namespace kelvora {

namespace {

bool IsVerb(char byte)
{
    using namespace TelnetByte;
    return byte == Will || byte == Wont || byte == Do || byte == Dont;
}

}  // namespace

std::string EscapeTelnet(std::string_view bytes)
{
    std::string escaped;
    escaped.reserve(bytes.size());
    for (const char byte : bytes)
        escaped.append(byte == TelnetByte::Iac ? 2 : 1, byte);
    return escaped;
}

std::string TelnetCommand(char verb, char option)
{
    return {TelnetByte::Iac, verb, option};
}

std::string TelnetSubnegotiation(char option, std::string_view content)
{
    return std::string{TelnetByte::Iac, TelnetByte::Sb, option} + EscapeTelnet(content) + TelnetByte::Iac +
           TelnetByte::Se;
}

bool BeginsTelnet(std::string_view bytes)
{
    return bytes.size() >= 2 && bytes[0] == TelnetByte::Iac &&
           (IsVerb(bytes[1]) || bytes[1] == TelnetByte::Sb);
}

TelnetReceiver::Event TelnetReceiver::Take(char byte)
{
    const bool isIac = byte == TelnetByte::Iac;
    switch (state_) {
        case State::Data:
            if (!isIac)
                return Event::Data;
            state_ = State::Command;
            return Event::None;
        case State::Command:
            return TakeCommand(byte);
        case State::Option:
            option_ = byte;
            state_ = State::Data;
            return Event::Negotiation;
        case State::SubOption:
            option_ = byte;
            content_.clear();
            tooLong_ = false;
            state_ = State::SubContent;
            return Event::None;
        case State::SubContent:
            if (isIac)
                state_ = State::SubCommand;
            else
                Append(byte);
            return Event::None;
        case State::SubCommand:
            break;
    }
    return TakeSubCommand(byte);
}

// Commands of two bytes, such as "are you there", mean nothing to a serial line.
TelnetReceiver::Event TelnetReceiver::TakeCommand(char byte)
{
    state_ = State::Data;
    if (byte == TelnetByte::Iac)
        return Event::Data;
    if (IsVerb(byte)) {
        verb_ = byte;
        state_ = State::Option;
    } else if (byte == TelnetByte::Sb) {
        state_ = State::SubOption;
    }
    return Event::None;
}

TelnetReceiver::Event TelnetReceiver::TakeSubCommand(char byte)
{
    if (byte == TelnetByte::Iac) {
        Append(byte);
        state_ = State::SubContent;
        return Event::None;
    }
    if (byte != TelnetByte::Se)
        // Its end has been lost: what comes is the next command.
        return TakeCommand(byte);
    state_ = State::Data;
    return tooLong_ ? Event::None : Event::Subnegotiation;
}

void TelnetReceiver::Append(char byte)
{
    tooLong_ = tooLong_ || content_.size() == MaximumContent;
    if (!tooLong_)
        content_ += byte;
}

}  // namespace kelvora
