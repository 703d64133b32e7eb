// Telnet as far as serial device servers speak it: the line's bytes, between them commands that begin with
// IAC (255).
//
//   IAC IAC                        the byte 255 of the line
//   IAC verb option                a wish or an agreement about an option
//   IAC SB option content IAC SE   what an option has to say; IAC IAC in it is the byte 255
//
// Taking apart and putting together only: nothing here decides or sends.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kelvora {

namespace TelnetByte {
inline constexpr char Se = '\xF0';  ///< ends what an option says
inline constexpr char Sb = '\xFA';  ///< begins it
inline constexpr char Will = '\xFB';
inline constexpr char Wont = '\xFC';
inline constexpr char Do = '\xFD';
inline constexpr char Dont = '\xFE';
inline constexpr char Iac = '\xFF';
}  // namespace TelnetByte

namespace TelnetOption {
inline constexpr char Binary = 0;        ///< all bytes pass as they are
inline constexpr char NoGoAhead = 3;     ///< both sides may send at any time
inline constexpr char ComPort = '\x2C';  ///< the settings of a serial port, RFC 2217
}  // namespace TelnetOption

/// The line's bytes as they are sent: each IAC twice.
std::string EscapeTelnet(std::string_view bytes);

std::string TelnetCommand(char verb, char option);
std::string TelnetSubnegotiation(char option, std::string_view content);

/// Whether these are the first bytes of a negotiation, which no server leaves out that speaks telnet.
bool BeginsTelnet(std::string_view bytes);

/// Takes apart what a server sends, byte by byte.
class TelnetReceiver {
public:
    enum class Event {
        None,
        Data,            ///< a byte of the line: the one that was taken
        Negotiation,     ///< see Verb() and Option()
        Subnegotiation,  ///< see Option() and Content()
    };

    /// What an option says is never longer: no answer of a serial port needs more than five bytes. What is
    /// longer is left out.
    static constexpr std::size_t MaximumContent = 64;

    Event Take(char byte);

    char Verb() const { return verb_; }
    char Option() const { return option_; }
    const std::string& Content() const { return content_; }

private:
    enum class State { Data, Command, Option, SubOption, SubContent, SubCommand };

    Event TakeCommand(char byte);
    Event TakeSubCommand(char byte);
    void Append(char byte);

    State state_ = State::Data;
    char verb_ = 0;
    char option_ = 0;
    std::string content_;
    bool tooLong_ = false;
};

}  // namespace kelvora
