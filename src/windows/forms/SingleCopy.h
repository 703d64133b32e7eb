// One running copy of the program for each user. A further start hands its files to the running copy, through
// a local socket: one packet with the paths, each but the last followed by a 0 byte, answered by one byte.
#pragma once

#include <QByteArray>
#include <QLockFile>
#include <QSocketNotifier>
#include <QStringList>
#include <functional>
#include <memory>

namespace kelvora {

class SingleCopy {
public:
    /// `folder` is the user's runtime folder.
    explicit SingleCopy(const QString& folder);
    ~SingleCopy();
    SingleCopy(const SingleCopy&) = delete;
    SingleCopy& operator=(const SingleCopy&) = delete;

    /// True when no other copy runs; this one then counts as running until the object goes. A copy that is
    /// closing down is waited for.
    bool Claim();

    /// Sends absolute paths to the running copy; false when it does not take them.
    bool HandOver(const QStringList& files) const;

    /// From now on `open` gets the files that further starts hand over.
    void Listen(std::function<void(const QStringList&)> open);

    /// Takes no more files: the program closes down.
    void StopListening();

private:
    void Receive();

    QByteArray socketPath_;
    QLockFile lock_;
    std::unique_ptr<QSocketNotifier> server_;
    std::function<void(const QStringList&)> open_;
};

}  // namespace kelvora
