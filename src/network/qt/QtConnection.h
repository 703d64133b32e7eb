// A connection over the system's sockets, on Qt's event loop. Qt's own network library would bring nine more
// libraries into each start.
#pragma once

#include <QSocketNotifier>
#include <QTimer>
#include <memory>
#include <optional>
#include <vector>

#include "network/posix/HostLookup.h"
#include "platform/Connection.h"
#include "platform/posix/Descriptor.h"

namespace kelvora {

class QtConnection final : public Connection {
public:
    QtConnection();
    ~QtConnection() override;
    QtConnection(const QtConnection&) = delete;
    QtConnection& operator=(const QtConnection&) = delete;

    void Connect(const std::string& host, std::uint16_t port) override;
    void Close() override;
    void Write(std::string_view bytes) override;

private:
    // One may be in the middle of its own call when it goes.
    struct Later {
        void operator()(QSocketNotifier* notifier) const
        {
            notifier->setEnabled(false);
            notifier->deleteLater();
        }
    };
    using Notifier = std::unique_ptr<QSocketNotifier, Later>;

    static Notifier Watch(int number, QSocketNotifier::Type type, std::function<void()> action);

    void TakeAddresses();
    void TryNext();
    void Try(const SocketAddress& address);
    void JudgeAttempt();
    void GiveUpAttempt(PortFailure failure, std::string words);
    void Receive();
    void Flush();
    void End(PortFailure failure, const std::string& words);

    std::optional<HostLookup> lookup_;
    std::vector<SocketAddress> addresses_;  ///< still to be tried, the next one last
    QTimer patience_;
    Descriptor socket_;
    Descriptor hold_;
    bool connected_ = false;
    std::string unsent_;
    PortFailure failure_ = PortFailure::None;  ///< of the attempts so far
    std::string words_;
    // After the descriptors that they watch.
    Notifier answered_;
    Notifier readable_;
    Notifier writable_;
};

}  // namespace kelvora
