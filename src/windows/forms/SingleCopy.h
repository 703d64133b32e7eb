// One running copy of the program for each user. A further start hands its files to the running copy, through
// a local socket: one packet with the paths, each but the last followed by a 0 byte, answered by one byte.
#pragma once

#include <QByteArray>
#include <QLockFile>
#include <QObject>
#include <QSocketNotifier>
#include <QStringList>
#include <memory>

namespace kelvora {

class SingleCopy final : public QObject {
    Q_OBJECT

public:
    /// `folder` is the user's runtime folder.
    explicit SingleCopy(const QString& folder);
    ~SingleCopy() override;

    /// True when no other copy runs; this one then counts as running until the object goes. A copy that is
    /// closing down is waited for.
    bool Claim();

    /// Sends absolute paths to the running copy; false when it does not take them.
    bool HandOver(const QStringList& files) const;

    /// From now on further starts can hand over their files.
    void Listen();

    /// Takes no more files: the program closes down.
    void StopListening();

signals:
    /// A further start has handed over these files, by their absolute paths.
    void filesHandedOver(const QStringList& files);

private:
    void Receive();

    QByteArray socketPath_;
    QLockFile lock_;
    std::unique_ptr<QSocketNotifier> server_;
};

}  // namespace kelvora
