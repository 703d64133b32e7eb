// Any bytes from a server on the network: the port opens or says why not within its time, a raw line's bytes
// come as they are, telnet's come the same in whatever pieces, and what is kept of them has bounds. Any lines
// from a bridge: an event for each command at most, and none after the connection has ended.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "Require.h"
#include "comms/BridgeLink.h"
#include "fakes/FakeConnection.h"
#include "network/NetworkPort.h"

namespace {

using namespace kelvora;

constexpr std::size_t PieceSize = 7;

struct Line {
    FakeEventLoop loop;
    std::unique_ptr<FakeConnection> made = std::make_unique<FakeConnection>(loop);
    FakeConnection& connection = *made;
    NetworkPort port{std::move(made), loop};
};

void Say(FakeConnection& connection, std::string_view bytes)
{
    for (std::size_t at = 0; at < bytes.size() && connection.isOpen; at += PieceSize)
        connection.onBytes(bytes.substr(at, PieceSize));
}

void CheckPort(const char* device, std::string_view bytes)
{
    Line line;
    const std::size_t first = bytes.size() / 2;
    // The first half while it opens, in pieces a moment apart.
    for (std::size_t at = 0; at < first; at += PieceSize)
        line.connection.says.emplace_back(static_cast<int>(at), std::string(bytes.substr(at, PieceSize)));
    line.port.SetDevice(device);
    const auto start = line.loop.Now();
    const bool opened = line.port.Open();
    Require(line.loop.Now() - start <= NetworkPort::OpenTime, "within its time");
    Require(opened == (line.port.Failure() == PortFailure::None), "open, or a reason");
    Require(opened || !line.connection.isOpen, "no connection without a port");
    const std::string_view rest = bytes.substr(first);
    const std::string before = line.port.Read();
    Say(line.connection, rest);
    Require(line.port.BytesWaiting() <= rest.size(), "no more than has come");
    const bool raw = std::string_view(device).starts_with("raw");
    Require(!raw || line.connection.written.empty(), "nothing of the program's own on a raw line");
    Require(!raw || !opened || line.port.Read() == rest, "a raw line's bytes as they are");
    line.port.SetSettings("1200,n,8,1");
    Require(line.port.IsOpen() == line.connection.isOpen, "a port as long as its connection");
}

void CheckPieces(std::string_view bytes)
{
    ComPortSession whole;
    ComPortSession pieces;
    const ComPortSession::Taken taken = whole.Take(bytes);
    std::string data;
    std::string answer;
    for (std::size_t at = 0; at < bytes.size(); at += PieceSize) {
        const ComPortSession::Taken each = pieces.Take(bytes.substr(at, PieceSize));
        data += each.data;
        answer += each.answer;
    }
    Require(data == taken.data && answer == taken.answer, "the same in pieces");
    Require(whole.Outcome() == ComPortSession::Settings::None, "no settings that were not asked for");
    ComPortSession sent;
    Require(sent.Take(EscapeTelnet(bytes)).data == bytes, "what is sent is what arrives");
}

void CheckBridge(std::string_view bytes)
{
    Line line;
    line.port.SetDevice("bridge:a:1");
    BridgeLink link(line.port, line.loop);
    Require(link.Open({}), "a bridge that is silent at first");
    int events = 0;
    link.onEvent = [&](LinkEvent, std::string_view text) {
        ++events;
        Require(text.find('\n') == std::string_view::npos, "one line");
    };
    int sends = 0;
    for (std::size_t at = 0; at < bytes.size() && link.IsOpen(); at += PieceSize) {
        if (bytes[at] % 2 == 0) {
            link.Send("20", LnkControl::UsualSends);
            ++sends;
        }
        line.connection.onBytes(bytes.substr(at, PieceSize));
        Require(events <= sends, "no more events than commands");
    }
    line.loop.Pass(BridgeLink::LongestAnswer);
    const int told = events;
    if (line.connection.isOpen)
        line.connection.HangUp();
    Require(events == told, "each command has had its event by now");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    for (const char* device : {"tcp:a:1", "rfc2217:a:1", "raw:a:1"})
        CheckPort(device, bytes);
    CheckPieces(bytes);
    CheckBridge(bytes);
    return 0;
}
