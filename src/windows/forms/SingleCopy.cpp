#include "windows/forms/SingleCopy.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <QFile>
#include <algorithm>
#include <iterator>

#include "platform/posix/Descriptor.h"

namespace kelvora {

namespace {

// How long the running copy may take to answer, in seconds, and one that closes down to be gone, in
// milliseconds.
constexpr timeval AnswerTimeout{2, 0};
constexpr int ClosingTimeoutMs = 4000;

constexpr int MostWaitingCalls = 16;
constexpr char Taken = '+';

/// A socket that reports when it can be read, and is closed with its notifier.
class ReadableSocket final : public QSocketNotifier {
public:
    explicit ReadableSocket(int handle, QObject* parent = nullptr)
        : QSocketNotifier(handle, QSocketNotifier::Read, parent)
    {
    }

    ~ReadableSocket() override
    {
        setEnabled(false);
        close(static_cast<int>(socket()));
    }
};

int MakeSocket(int flags)
{
    return socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | flags, 0);
}

/// Hands the path's address to `call`, connect or bind; false when that fails, or when the path is too long
/// for an address.
template <class Call>
bool WithAddress(int handle, const QByteArray& path, Call call)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    // A 0 byte at the end is part of the address.
    if (static_cast<std::size_t>(path.size()) >= sizeof address.sun_path)
        return false;
    std::ranges::copy(path, std::begin(address.sun_path));
    return call(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

bool Connect(int handle, const QByteArray& path)
{
    setsockopt(handle, SOL_SOCKET, SO_SNDTIMEO, &AnswerTimeout, sizeof AnswerTimeout);
    setsockopt(handle, SOL_SOCKET, SO_RCVTIMEO, &AnswerTimeout, sizeof AnswerTimeout);
    return WithAddress(handle, path, connect);
}

QByteArray ReadPacket(int handle)
{
    const ssize_t size = recv(handle, nullptr, 0, MSG_PEEK | MSG_TRUNC);
    if (size <= 0)
        return {};
    QByteArray packet(size, '\0');
    return recv(handle, packet.data(), static_cast<std::size_t>(size), 0) == size ? packet : QByteArray();
}

QByteArray JoinPaths(const QStringList& files)
{
    QByteArrayList paths;
    for (const QString& file : files)
        paths << QFile::encodeName(file);
    return paths.join('\0');
}

QStringList SplitPaths(const QByteArray& packet)
{
    QStringList files;
    for (const QByteArray& path : packet.split('\0'))
        files << QFile::decodeName(path);
    return files;
}

}  // namespace

SingleCopy::SingleCopy(const QString& folder)
    : socketPath_(QFile::encodeName(folder + QStringLiteral("/kelvora.socket"))),
      lock_(folder + QStringLiteral("/kelvora.lock"))
{
    // The lock goes with its process, whatever ends it; it is never too old.
    lock_.setStaleLockTime(0);
}

SingleCopy::~SingleCopy()
{
    StopListening();
}

bool SingleCopy::Claim()
{
    if (lock_.tryLock(0))
        return true;
    const Descriptor running(MakeSocket(0));
    if (Connect(running.Number(), socketPath_))
        return false;
    // Nobody answers. A lock that names no process is what a power cut left; one that does belongs to a copy
    // that is closing down, or to one whose socket is gone.
    qint64 owner = 0;
    QString host;
    QString program;
    if (!lock_.getLockInfo(&owner, &host, &program))
        QFile::remove(lock_.fileName());
    if (lock_.tryLock(ClosingTimeoutMs))
        return true;
    // Where no lock can be made at all, being the only copy cannot be known; that must not stop the work.
    return lock_.error() != QLockFile::LockFailedError;
}

bool SingleCopy::HandOver(const QStringList& files) const
{
    const Descriptor running(MakeSocket(0));
    if (!Connect(running.Number(), socketPath_))
        return false;
    const QByteArray message = JoinPaths(files);
    char answer = 0;
    return send(running.Number(), message.data(), static_cast<std::size_t>(message.size()), MSG_NOSIGNAL) ==
               message.size() &&
           recv(running.Number(), &answer, 1, 0) == 1 && answer == Taken;
}

void SingleCopy::Listen()
{
    const int handle = MakeSocket(SOCK_NONBLOCK);
    if (handle < 0)
        return;
    server_ = std::make_unique<ReadableSocket>(handle);
    connect(server_.get(), &QSocketNotifier::activated, server_.get(), [this] { Receive(); });
    // The lock is ours, so a socket that is there was left behind by a copy that was killed.
    unlink(socketPath_.constData());
    // Set before it has a name: at no moment may somebody else call.
    fchmod(handle, S_IRUSR | S_IWUSR);
    if (!WithAddress(handle, socketPath_, bind) || listen(handle, MostWaitingCalls) != 0)
        server_.reset();
}

void SingleCopy::StopListening()
{
    if (!server_)
        return;
    server_.reset();
    unlink(socketPath_.constData());
}

void SingleCopy::Receive()
{
    const int handle =
        accept4(static_cast<int>(server_->socket()), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (handle < 0)
        return;
    auto* caller = new ReadableSocket(handle, server_.get());
    connect(caller, &QSocketNotifier::activated, caller, [this, caller, handle] {
        const QByteArray packet = ReadPacket(handle);
        if (!packet.isEmpty()) {
            send(handle, &Taken, 1, MSG_NOSIGNAL);
            // Opening may ask the user: not inside the caller's turn.
            QMetaObject::invokeMethod(
                server_.get(), [this, packet] { emit filesHandedOver(SplitPaths(packet)); },
                Qt::QueuedConnection);
        }
        caller->setEnabled(false);
        caller->deleteLater();
    });
}

}  // namespace kelvora
