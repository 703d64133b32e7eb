#include "network/posix/HostLookup.h"

#include <netdb.h>
#include <sys/eventfd.h>

#include <cstring>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/posix/Descriptor.h"

namespace kelvora {

namespace {

std::vector<SocketAddress> Ask(const std::string& host, std::uint16_t port, int flags)
{
    addrinfo hints{};
    hints.ai_flags = flags | AI_NUMERICSERV;
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    std::vector<SocketAddress> addresses;
    if (getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &found) != 0)
        return addresses;
    for (const addrinfo* each = found; each; each = each->ai_next) {
        SocketAddress& address = addresses.emplace_back();
        std::memcpy(&address.storage, each->ai_addr, each->ai_addrlen);
        address.length = each->ai_addrlen;
    }
    freeaddrinfo(found);
    return addresses;
}

}  // namespace

// Shared with the thread, which may come back long after its asker has gone.
struct HostLookup::Answer {
    Descriptor ready;
    std::mutex mutex;
    std::vector<SocketAddress> addresses;

    void Tell(std::vector<SocketAddress> found)
    {
        const std::lock_guard lock(mutex);
        addresses = std::move(found);
        eventfd_write(ready.Number(), 1);
    }
};

HostLookup::HostLookup(const std::string& host, std::uint16_t port) : answer_(std::make_shared<Answer>())
{
    answer_->ready = Descriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK), "eventfd");
    // What is an address already needs no thread.
    if (auto addresses = Ask(host, port, AI_NUMERICHOST); !addresses.empty()) {
        answer_->Tell(std::move(addresses));
        return;
    }
    try {
        std::thread([answer = answer_, host, port] { answer->Tell(Ask(host, port, 0)); }).detach();
    } catch (const std::system_error&) {
        answer_->Tell({});
    }
}

int HostLookup::Number() const
{
    return answer_->ready.Number();
}

std::vector<SocketAddress> HostLookup::Addresses() const
{
    const std::lock_guard lock(answer_->mutex);
    return answer_->addresses;
}

}  // namespace kelvora
