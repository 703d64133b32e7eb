#include "app/forms/SingleCopy.h"

#include <QDataStream>
#include <QIODevice>
#include <QLocalSocket>
#include <utility>

namespace kelvora {

namespace {

// How long the running copy may take to answer, and one that closes down to be gone, in milliseconds.
constexpr int AnswerTimeoutMs = 2000;
constexpr int ClosingTimeoutMs = 4000;

constexpr char Taken = '+';

}  // namespace

SingleCopy::SingleCopy(const QString& folder)
    : socketPath_(folder + QStringLiteral("/kelvora.socket")), lock_(folder + QStringLiteral("/kelvora.lock"))
{
    // The lock goes with its process, whatever ends it; it is never too old.
    lock_.setStaleLockTime(0);
}

bool SingleCopy::Claim()
{
    if (lock_.tryLock(0))
        return true;
    QLocalSocket running;
    running.connectToServer(socketPath_);
    return !running.waitForConnected(AnswerTimeoutMs) && lock_.tryLock(ClosingTimeoutMs);
}

bool SingleCopy::HandOver(const QStringList& files) const
{
    QLocalSocket running;
    running.connectToServer(socketPath_);
    if (!running.waitForConnected(AnswerTimeoutMs))
        return false;
    QByteArray message;
    QDataStream stream(&message, QIODevice::WriteOnly);
    stream << files;
    running.write(message);
    char answer = 0;
    return running.waitForBytesWritten(AnswerTimeoutMs) && running.waitForReadyRead(AnswerTimeoutMs) &&
           running.getChar(&answer) && answer == Taken;
}

void SingleCopy::Listen(std::function<void(const QStringList&)> open)
{
    open_ = std::move(open);
    server_ = std::make_unique<QLocalServer>();
    server_->setSocketOptions(QLocalServer::UserAccessOption);
    QObject::connect(server_.get(), &QLocalServer::newConnection, server_.get(), [this] { Receive(); });
    // The lock is ours, so a socket that is there was left behind by a copy that was killed.
    QLocalServer::removeServer(socketPath_);
    server_->listen(socketPath_);
}

void SingleCopy::StopListening()
{
    server_.reset();
}

void SingleCopy::Receive()
{
    QLocalSocket* caller = server_->nextPendingConnection();
    if (!caller)
        return;
    QObject::connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
    QObject::connect(caller, &QLocalSocket::readyRead, caller, [this, caller] {
        QDataStream stream(caller);
        QStringList files;
        stream.startTransaction();
        stream >> files;
        if (!stream.commitTransaction())
            return;
        caller->putChar(Taken);
        caller->flush();
        open_(files);
    });
}

}  // namespace kelvora
