// Tells when a program closes one of many files. One inotify instance serves all of them: a user may have no
// more than some hundred of those.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "bench/posix/PollLoop.h"
#include "platform/posix/Descriptor.h"

namespace kelvora::bench {

class CloseWatch {
public:
    /// `loop` outlives this. Throws std::system_error.
    explicit CloseWatch(PollLoop& loop);
    CloseWatch(const CloseWatch&) = delete;
    CloseWatch& operator=(const CloseWatch&) = delete;
    ~CloseWatch();

    /// Calls `closed` after the file was closed, once for several times that have come together; also when
    /// so much was closed that the system has lost count. Returns the number for Remove. Throws
    /// std::system_error.
    int Add(const std::string& path, std::function<void()> closed);
    /// Nothing happens for a number that is not there.
    void Remove(int number);

private:
    void Read();

    PollLoop& loop_;
    Descriptor events_;
    std::map<int, std::function<void()>> closed_;
};

}  // namespace kelvora::bench
