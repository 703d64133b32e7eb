// Holds a state file against another kelvora-bench. The lock is that of an open file beside it, FILE.lock,
// and ends with the process that has it open, however that ends; the file's text is that process's number.
#pragma once

#include <string>

#include "platform/posix/Descriptor.h"

namespace kelvora::bench {

class StateLock {
public:
    /// Throws StateError, which names `path` and the process that plays it, when another one does, and
    /// std::system_error when no file can be made beside it.
    explicit StateLock(const std::string& path);
    StateLock(const StateLock&) = delete;
    StateLock& operator=(const StateLock&) = delete;
    StateLock(StateLock&&) noexcept = default;
    StateLock& operator=(StateLock&&) = delete;
    ~StateLock();

private:
    std::string lockPath_;
    Descriptor file_;
};

}  // namespace kelvora::bench
