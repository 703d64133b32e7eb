#include "bench/posix/StateLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <filesystem>

#include "bench/StateText.h"

namespace kelvora::bench {

namespace {

// A link and what it leads to are one state.
std::string LockPathOf(const std::string& path)
{
    std::error_code error;
    const std::filesystem::path real = std::filesystem::weakly_canonical(path, error);
    return (error ? path : real.string()) + ".lock";
}

// Whoever lets go removes the file: another process may then lock one that has no name any more.
bool IsStill(const std::string& path, int descriptor)
{
    struct stat named {};
    struct stat open {};
    return stat(path.c_str(), &named) == 0 && fstat(descriptor, &open) == 0 && named.st_ino == open.st_ino &&
           named.st_dev == open.st_dev;
}

std::string HolderIn(int descriptor)
{
    std::array<char, 32> number{};
    const ssize_t length = pread(descriptor, number.data(), number.size(), 0);
    const std::string text(number.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    return text.empty() ? "another kelvora-bench" : "kelvora-bench (PID " + text + ")";
}

}  // namespace

StateLock::StateLock(const std::string& path) : lockPath_(LockPathOf(path))
{
    do {
        const int number = open(lockPath_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
        if (number < 0)
            throw std::system_error(errno, std::generic_category(), lockPath_);
        file_ = Descriptor(number);
        if (flock(number, LOCK_EX | LOCK_NB) != 0)
            throw StateError(path + " is played by " + HolderIn(number));
    } while (!IsStill(lockPath_, file_.Number()));
    const std::string process = std::to_string(getpid());
    if (ftruncate(file_.Number(), 0) != 0 ||
        pwrite(file_.Number(), process.data(), process.size(), 0) != static_cast<ssize_t>(process.size()))
        throw std::system_error(errno, std::generic_category(), lockPath_);
}

StateLock::~StateLock()
{
    if (file_.IsOpen())
        unlink(lockPath_.c_str());
}

}  // namespace kelvora::bench
