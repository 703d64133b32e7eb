#include "bench/posix/PollLoop.h"

#include <sys/epoll.h>
#include <sys/prctl.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <system_error>
#include <utility>

namespace kelvora::bench {

// A byte at 115200 baud takes 87 microseconds; the system would join wake-ups within 50.
PollLoop::PollLoop() : epoll_(epoll_create1(EPOLL_CLOEXEC), "epoll_create1")
{
    prctl(PR_SET_TIMERSLACK, 1UL);
}

void PollLoop::At(Time due, std::function<void()> action)
{
    due_.emplace(due, std::move(action));
}

void PollLoop::Watch(int descriptor, std::function<void()> ready)
{
    epoll_event event{.events = EPOLLIN, .data = {.fd = descriptor}};
    const bool isFile = epoll_ctl(epoll_.Number(), EPOLL_CTL_ADD, descriptor, &event) != 0;
    if (isFile && errno != EPERM)
        throw std::system_error(errno, std::generic_category(), "epoll_ctl");
    watched_[descriptor] = std::move(ready);
    if (isFile)
        At(Now(), [this, descriptor] { AlwaysReady(descriptor); });
}

void PollLoop::Unwatch(int descriptor)
{
    if (watched_.erase(descriptor) > 0)
        epoll_ctl(epoll_.Number(), EPOLL_CTL_DEL, descriptor, nullptr);
}

void PollLoop::Run()
{
    while (!isStopped_) {
        Wait();
        RunDue();
    }
}

void PollLoop::Ready(int descriptor)
{
    const auto found = watched_.find(descriptor);
    if (found != watched_.end())
        std::function<void()>(found->second)();
}

void PollLoop::AlwaysReady(int descriptor)
{
    if (!watched_.contains(descriptor))
        return;
    Ready(descriptor);
    At(Now(), [this, descriptor] { AlwaysReady(descriptor); });
}

void PollLoop::Wait()
{
    timespec limit{};
    if (!due_.empty()) {
        const auto time = std::max(due_.begin()->first - Now(), Time::duration::zero());
        const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
        limit = {.tv_sec = seconds.count(), .tv_nsec = (time - seconds).count()};
    }
    std::array<epoll_event, 64> events{};
    const int count = epoll_pwait2(epoll_.Number(), events.data(), static_cast<int>(events.size()),
                                   due_.empty() ? nullptr : &limit, nullptr);
    if (count < 0 && errno != EINTR)
        throw std::system_error(errno, std::generic_category(), "epoll_pwait2");
    for (int index = 0; index < count; ++index)
        Ready(events.at(static_cast<std::size_t>(index)).data.fd);
}

void PollLoop::RunDue()
{
    for (const Time now = Now(); !isStopped_ && !due_.empty() && due_.begin()->first <= now;) {
        const auto action = due_.extract(due_.begin()).mapped();
        action();
    }
}

}  // namespace kelvora::bench
