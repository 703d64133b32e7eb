#include "network/qt/QtConnection.h"

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

#include "network/posix/TcpSocket.h"

namespace kelvora {

namespace {

/// How many of a machine's addresses are tried, and how long each but the last may keep silent.
constexpr std::size_t MostAddresses = 4;
constexpr std::chrono::milliseconds AttemptTime{1200};

constexpr std::size_t ReadSize = 16384;

}  // namespace

QtConnection::QtConnection()
{
    patience_.setSingleShot(true);
    patience_.callOnTimeout([this] { GiveUpAttempt(PortFailure::NoAnswer, "no connection"); });
}

QtConnection::~QtConnection()
{
    Close();
}

QtConnection::Notifier QtConnection::Watch(int number, QSocketNotifier::Type type,
                                           std::function<void()> action)
{
    Notifier notifier(new QSocketNotifier(number, type));
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), std::move(action));
    return notifier;
}

void QtConnection::Connect(const std::string& host, std::uint16_t port)
{
    Close();
    failure_ = PortFailure::HostNotFound;
    words_ = "no address of " + host;
    try {
        lookup_.emplace(host, port);
    } catch (const std::system_error& error) {
        End(PortFailure::Other, error.what());
        return;
    }
    answered_ = Watch(lookup_->Number(), QSocketNotifier::Read, [this] { TakeAddresses(); });
}

void QtConnection::TakeAddresses()
{
    addresses_ = lookup_->Addresses();
    answered_.reset();
    lookup_.reset();
    addresses_.resize(std::min(addresses_.size(), MostAddresses));
    std::ranges::reverse(addresses_);
    TryNext();
}

void QtConnection::TryNext()
{
    if (addresses_.empty()) {
        End(failure_, words_);
        return;
    }
    const SocketAddress address = addresses_.back();
    addresses_.pop_back();
    try {
        Try(address);
    } catch (const std::system_error& error) {
        GiveUpAttempt(FailureOfConnect(error.code().value()), strerrordesc_np(error.code().value()));
    }
}

void QtConnection::Try(const SocketAddress& address)
{
    auto hold = HoldLine(address);
    if (!hold) {
        GiveUpAttempt(PortFailure::InUse, "a program on this machine uses this line");
        return;
    }
    hold_ = *std::move(hold);
    socket_ = BeginConnect(address);
    writable_ = Watch(socket_.Number(), QSocketNotifier::Write, [this] { JudgeAttempt(); });
    if (!addresses_.empty())
        patience_.start(AttemptTime);
}

void QtConnection::JudgeAttempt()
{
    if (connected_) {
        Flush();
        return;
    }
    if (const int error = ConnectError(socket_); error != 0) {
        GiveUpAttempt(FailureOfConnect(error), strerrordesc_np(error));
        return;
    }
    patience_.stop();
    connected_ = true;
    writable_->setEnabled(false);
    readable_ = Watch(socket_.Number(), QSocketNotifier::Read, [this] { Receive(); });
    if (const auto tell = onConnected)
        tell();
}

void QtConnection::GiveUpAttempt(PortFailure failure, std::string words)
{
    failure_ = failure;
    words_ = std::move(words);
    patience_.stop();
    writable_.reset();
    socket_.Close();
    hold_.Close();
    TryNext();
}

void QtConnection::Receive()
{
    std::array<char, ReadSize> bytes;
    const ssize_t length = recv(socket_.Number(), bytes.data(), bytes.size(), 0);
    if (length > 0) {
        if (const auto tell = onBytes)
            tell({bytes.data(), static_cast<std::size_t>(length)});
    } else if (length == 0) {
        End(PortFailure::Disconnected, "the server has closed the connection");
    } else if (errno != EAGAIN && errno != EINTR) {
        End(PortFailure::Disconnected, strerrordesc_np(errno));
    }
}

void QtConnection::Write(std::string_view bytes)
{
    if (!connected_)
        return;
    unsent_ += bytes;
    Flush();
}

void QtConnection::Flush()
{
    while (!unsent_.empty()) {
        const ssize_t sent = send(socket_.Number(), unsent_.data(), unsent_.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno == EINTR)
            continue;
        if (sent < 0) {
            // Of a connection that has ended the receiving side tells.
            if (errno != EAGAIN)
                unsent_.clear();
            break;
        }
        unsent_.erase(0, static_cast<std::size_t>(sent));
    }
    writable_->setEnabled(!unsent_.empty());
}

void QtConnection::Close()
{
    patience_.stop();
    answered_.reset();
    readable_.reset();
    writable_.reset();
    lookup_.reset();
    addresses_.clear();
    unsent_.clear();
    connected_ = false;
    socket_.Close();
    hold_.Close();
}

void QtConnection::End(PortFailure failure, const std::string& words)
{
    // The words may be a member that goes.
    const std::string told = words;
    Close();
    if (const auto tell = onClosed)
        tell(failure, told);
}

}  // namespace kelvora
