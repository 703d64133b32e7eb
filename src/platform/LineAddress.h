// What stands behind a line besides a device of this machine: an address on the network, as it is written in
// --line, in ports.ini and in the dialog of the ports.
//
//   tcp:HOST:PORT        a serial device server: by RFC 2217 where it begins a telnet negotiation, else raw
//   rfc2217:HOST:PORT    the same, by RFC 2217 alone
//   raw:HOST:PORT        the same, raw: what is sent and received are the line's own bytes
//   bridge:HOST:PORT     a program that talks to the terminal itself, see comms/BridgeLink.h
//
// HOST is a name, an IPv4 address, or an IPv6 address in brackets; PORT is 1 to 65535.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kelvora {

enum class LineProtocol { Detected, Rfc2217, Raw, Bridge };

struct LineAddress {
    LineProtocol protocol = LineProtocol::Detected;
    std::string host;  ///< without brackets
    std::uint16_t port = 0;

    friend bool operator==(const LineAddress&, const LineAddress&) = default;
};

/// The address that a text is; nothing for any other text, the path of a device among them.
std::optional<LineAddress> ParseLineAddress(std::string_view text);

/// Whether a bridge stands behind a line of that device.
bool IsBridge(std::string_view device);

}  // namespace kelvora
