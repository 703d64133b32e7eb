// Work that may take for ever, on a thread of its own: to read a file of a network drive that does not
// answer, say.
#pragma once

#include <QFutureWatcher>
#include <QPromise>
#include <memory>
#include <thread>
#include <type_traits>
#include <utility>

namespace kelvora {

/// Does `work` elsewhere, then `done` with its result on the thread of `owner`, unless that has gone. Nobody
/// waits for it, not even the end of the program: `work` owns what it touches, and throws nothing. Throws
/// std::system_error where the system has no thread for it.
template <class Work, class Done>
void InBackground(QObject& owner, Work work, Done done)
{
    using Result = std::invoke_result_t<Work>;
    QPromise<Result> promise;
    auto watcher = std::make_unique<QFutureWatcher<Result>>();
    QObject::connect(watcher.get(), &QFutureWatcherBase::finished, &owner,
                     [watcher = watcher.get(), done = std::move(done)] {
                         watcher->deleteLater();
                         done(watcher->result());
                     });
    watcher->setFuture(promise.future());
    std::thread([work = std::move(work), promise = std::move(promise)]() mutable {
        promise.start();
        promise.addResult(work());
        promise.finish();
    }).detach();
    watcher.release()->setParent(&owner);
}

}  // namespace kelvora
