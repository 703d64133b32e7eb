#include "network/posix/TcpSocket.h"

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/un.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace kelvora {

namespace {

/// A connection over which nothing passes is asked after so many seconds, then again in shorter steps, and
/// is given up when nobody answers.
constexpr int IdleSeconds = 5;
constexpr int StepSeconds = 2;
constexpr int Steps = 3;

/// What was sent must have arrived within that many milliseconds.
constexpr unsigned ArrivalMs = 10'000;

template <class Value>
void SetOption(const Descriptor& socket, int level, int option, Value value)
{
    // One that the system lacks costs comfort, not the connection.
    setsockopt(socket.Number(), level, option, &value, sizeof value);
}

std::string AddressText(const SocketAddress& address)
{
    std::array<char, NI_MAXHOST> host{};
    std::array<char, NI_MAXSERV> port{};
    getnameinfo(reinterpret_cast<const sockaddr*>(&address.storage), address.length, host.data(), host.size(),
                port.data(), port.size(), NI_NUMERICHOST | NI_NUMERICSERV);
    return std::string(host.data()) + ' ' + port.data();
}

}  // namespace

Descriptor BeginConnect(const SocketAddress& address)
{
    Descriptor socket(
        ::socket(address.storage.ss_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, IPPROTO_TCP),
        "socket");
    // Each frame waits for its answer: collecting bytes would only delay them.
    SetOption(socket, IPPROTO_TCP, TCP_NODELAY, 1);
    SetOption(socket, SOL_SOCKET, SO_KEEPALIVE, 1);
    SetOption(socket, IPPROTO_TCP, TCP_KEEPIDLE, IdleSeconds);
    SetOption(socket, IPPROTO_TCP, TCP_KEEPINTVL, StepSeconds);
    SetOption(socket, IPPROTO_TCP, TCP_KEEPCNT, Steps);
    SetOption(socket, IPPROTO_TCP, TCP_USER_TIMEOUT, ArrivalMs);
    const auto* const where = reinterpret_cast<const sockaddr*>(&address.storage);
    const int result = connect(socket.Number(), where, address.length);
    if (result < 0 && errno != EINPROGRESS)
        throw std::system_error(errno, std::generic_category(), "connect");
    return socket;
}

int ConnectError(const Descriptor& socket)
{
    int error = 0;
    socklen_t length = sizeof error;
    getsockopt(socket.Number(), SOL_SOCKET, SO_ERROR, &error, &length);
    return error;
}

PortFailure FailureOfConnect(int error)
{
    switch (error) {
        case ECONNREFUSED:
            return PortFailure::Refused;
        case ETIMEDOUT:
        case EHOSTUNREACH:
        case ENETUNREACH:
            return PortFailure::NoAnswer;
        default:
            return PortFailure::Other;
    }
}

// A name that the system gives to one program alone, and takes back when that ends, however it ends.
std::optional<Descriptor> HoldLine(const SocketAddress& address)
{
    Descriptor holder(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0), "socket");
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    // A name that begins with 0 is in no folder.
    const std::string text = std::string(1, '\0') + "kelvora line " + AddressText(address);
    const std::size_t size = std::min(text.size(), sizeof name.sun_path);
    std::copy_n(text.begin(), size, name.sun_path);
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + size);
    if (bind(holder.Number(), reinterpret_cast<const sockaddr*>(&name), length) == 0)
        return holder;
    if (errno == EADDRINUSE)
        return std::nullopt;
    throw std::system_error(errno, std::generic_category(), "bind");
}

}  // namespace kelvora
