// The real clock of simulated lines, and what wakes them: descriptors and due times.
#pragma once

#include <functional>
#include <map>

#include "bench/LineClock.h"
#include "platform/posix/Descriptor.h"

namespace kelvora::bench {

class PollLoop final : public LineClock {
public:
    /// Throws std::system_error.
    PollLoop();

    Time Now() const override { return std::chrono::steady_clock::now(); }
    void At(Time due, std::function<void()> action) override;

    /// Calls `ready` whenever the descriptor can be read or has failed; that of a file, which always can, at
    /// each turn. Throws std::system_error and watches nothing new, with EEXIST for one that is watched
    /// already.
    void Watch(int descriptor, std::function<void()> ready);
    void Unwatch(int descriptor);

    /// Runs until Stop. Throws std::system_error.
    void Run();
    void Stop() { isStopped_ = true; }

private:
    void Ready(int descriptor);
    void AlwaysReady(int descriptor);
    void Wait();
    void RunDue();

    Descriptor epoll_;
    std::multimap<Time, std::function<void()>> due_;
    std::map<int, std::function<void()>> watched_;
    bool isStopped_ = false;
};

}  // namespace kelvora::bench
