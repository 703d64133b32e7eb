// The client's side of a serial line by RFC 2217: which telnet options hold, and the settings of the port at
// the server's end. What an option has to say for ComPort is a code and a value; the server answers each with
// the code + 100 and the value in force.
//
//   1 speed (4 bytes, high first)     5 control: 1 no flow control, 8 DTR on, 11 RTS on
//   2 data bits   3 parity: 1 n, 2 o, 3 e   4 stop bits      12 discard: 1 what was received
//
// A state machine over bytes: what comes goes in, what is to be sent comes out.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "network/Telnet.h"
#include "platform/SerialSettings.h"

namespace kelvora {

class ComPortSession {
public:
    /// What came in, taken apart.
    struct Taken {
        std::string data;    ///< bytes of the line
        std::string answer;  ///< to be sent to the server
    };

    enum class Settings {
        None,     ///< none were asked for yet
        Asked,    ///< an answer is still to come
        InForce,  ///< the server has answered with the same
        Refused,  ///< the server has answered with others, see Kept()
    };

    /// The client's wishes, with which it begins.
    static std::string Begin();

    Taken Take(std::string_view bytes);

    /// Whether the server has answered all wishes.
    bool IsAgreed() const;
    /// Whether all bytes pass as they are, both ways.
    bool IsTransparent() const
    {
        return weSend_[BinaryAt] == Wish::Agreed && theySend_[BinaryAt] == Wish::Agreed;
    }
    /// Whether the server takes settings.
    bool TakesSettings() const { return weSend_[ComPortAt] == Wish::Agreed; }

    /// Begins to set the port; returns what is to be sent.
    std::string Ask(const SerialSettings& settings);
    Settings Outcome() const;
    /// The server's own settings where it has refused others, such as "19200,n,8,1".
    std::string Kept() const;

    /// No flow control, and both control lines on, as a port of this machine has them. A server whose port
    /// has no control lines need not answer.
    static std::string RaiseControlLines();
    /// Throws away what the server has received and not sent yet.
    static std::string DiscardReceived();

private:
    enum class Wish { Unspoken, Open, Agreed, Declined };

    /// Where an option stands in the two lists below.
    static constexpr std::size_t BinaryAt = 0, NoGoAheadAt = 1, ComPortAt = 2, OptionCount = 3;
    /// Speed, data bits, parity, stop bits: the codes 1 to 4.
    static constexpr std::size_t SettingCount = 4;

    std::string Negotiate();
    static bool Settle(Wish& wish, bool agrees);
    void TakeAnswer();

    TelnetReceiver receiver_;
    std::array<Wish, OptionCount> weSend_{Wish::Open, Wish::Open, Wish::Open};
    std::array<Wish, OptionCount> theySend_{Wish::Open, Wish::Open, Wish::Unspoken};
    std::array<std::string, SettingCount> asked_;     ///< values as they are sent; empty before the first
    std::array<std::string, SettingCount> answered_;  ///< empty where no answer has come
};

}  // namespace kelvora
