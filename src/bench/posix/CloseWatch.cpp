#include "bench/posix/CloseWatch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <set>
#include <utility>

namespace kelvora::bench {

CloseWatch::CloseWatch(PollLoop& loop)
    : loop_(loop), events_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC), "inotify_init1")
{
    loop_.Watch(events_.Number(), [this] { Read(); });
}

CloseWatch::~CloseWatch()
{
    loop_.Unwatch(events_.Number());
}

int CloseWatch::Add(const std::string& path, std::function<void()> closed)
{
    const int number = inotify_add_watch(events_.Number(), path.c_str(), IN_CLOSE);
    if (number < 0)
        throw std::system_error(errno, std::generic_category(), "inotify_add_watch");
    closed_[number] = std::move(closed);
    return number;
}

void CloseWatch::Remove(int number)
{
    if (closed_.erase(number) > 0)
        inotify_rm_watch(events_.Number(), number);
}

void CloseWatch::Read()
{
    std::set<int> numbers;
    std::array<char, 4096> bytes{};
    for (ssize_t length = 0; (length = read(events_.Number(), bytes.data(), bytes.size())) > 0;) {
        inotify_event event{};
        for (ssize_t at = 0; at < length; at += static_cast<ssize_t>(sizeof event + event.len)) {
            std::memcpy(&event, bytes.data() + at, sizeof event);
            if ((event.mask & IN_CLOSE) != 0)
                numbers.insert(event.wd);
            // More has come than the system keeps: any of them may have been closed.
            if ((event.mask & IN_Q_OVERFLOW) != 0)
                for (const auto& watched : closed_)
                    numbers.insert(watched.first);
        }
    }
    // A number that was removed may still have been told, and one is removed by what another calls.
    for (const int number : numbers)
        if (const auto found = closed_.find(number); found != closed_.end())
            std::function<void()>(found->second)();
}

}  // namespace kelvora::bench
