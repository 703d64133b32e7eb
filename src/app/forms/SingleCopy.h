// One running copy of the program for each user. A further start hands its files to the running copy.
#pragma once

#include <QLocalServer>
#include <QLockFile>
#include <QStringList>
#include <functional>
#include <memory>

namespace kelvora {

class SingleCopy {
public:
    /// `folder` is the user's runtime folder.
    explicit SingleCopy(const QString& folder);

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

    QString socketPath_;
    QLockFile lock_;
    std::unique_ptr<QLocalServer> server_;
    std::function<void(const QStringList&)> open_;
};

}  // namespace kelvora
