// The addresses of a machine, asked for on a thread of its own: the system may take half a minute for it.
#pragma once

#include <sys/socket.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace kelvora {

struct SocketAddress {
    sockaddr_storage storage{};
    socklen_t length = 0;
};

class HostLookup {
public:
    /// Begins. `host` is a name or an address. The object may go before the answer has come. Throws
    /// std::system_error.
    HostLookup(const std::string& host, std::uint16_t port);

    /// The descriptor that becomes readable when the answer is there.
    int Number() const;

    /// The answer, the system's first choice first; empty when no machine has that name.
    std::vector<SocketAddress> Addresses() const;

private:
    struct Answer;

    std::shared_ptr<Answer> answer_;
};

}  // namespace kelvora
