#include "bench/posix/PollLoop.h"

#include <poll.h>
#include <sys/prctl.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <system_error>
#include <utility>
#include <vector>

namespace kelvora::bench {

// A byte at 115200 baud takes 87 microseconds; the system would join wake-ups within 50.
PollLoop::PollLoop()
{
    prctl(PR_SET_TIMERSLACK, 1UL);
}

void PollLoop::At(Time due, std::function<void()> action)
{
    due_.emplace(due, std::move(action));
}

void PollLoop::Watch(int descriptor, std::function<void()> ready)
{
    watched_[descriptor] = std::move(ready);
}

void PollLoop::Unwatch(int descriptor)
{
    watched_.erase(descriptor);
}

void PollLoop::Run()
{
    while (!isStopped_) {
        Wait();
        RunDue();
    }
}

void PollLoop::Wait()
{
    std::vector<pollfd> descriptors;
    descriptors.reserve(watched_.size());
    for (const auto& [descriptor, ready] : watched_)
        descriptors.push_back({.fd = descriptor, .events = POLLIN, .revents = 0});
    timespec limit{};
    if (!due_.empty()) {
        const auto time = std::max(due_.begin()->first - Now(), Time::duration::zero());
        const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
        limit = {.tv_sec = seconds.count(), .tv_nsec = (time - seconds).count()};
    }
    if (ppoll(descriptors.data(), descriptors.size(), due_.empty() ? nullptr : &limit, nullptr) < 0 &&
        errno != EINTR)
        throw std::system_error(errno, std::generic_category(), "ppoll");
    for (const pollfd& descriptor : descriptors) {
        const auto found = watched_.find(descriptor.fd);
        if (descriptor.revents == 0 || found == watched_.end())
            continue;
        const auto ready = found->second;
        ready();
    }
}

void PollLoop::RunDue()
{
    for (const Time now = Now(); !isStopped_ && !due_.empty() && due_.begin()->first <= now;) {
        const auto action = due_.extract(due_.begin()).mapped();
        action();
    }
}

}  // namespace kelvora::bench
