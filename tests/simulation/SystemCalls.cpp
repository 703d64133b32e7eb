#include "simulation/SystemCalls.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <random>
#include <string_view>

namespace kelvora::simulation {

namespace {

SimulatedSystem* answering = nullptr;

/// An open folder: readdir gives one name after another.
struct Listing {
    std::string path;
    std::vector<std::string> names;
    std::size_t next = 0;
    dirent entry{};
};

bool IsHere(const char* path)
{
    return answering && std::string_view(path).starts_with("/sim");
}

bool IsHere(int file)
{
    return answering && answering->disk.Opened(file);
}

// As the system tells of errors.
template <class Result>
Result Told(Result result)
{
    if (result >= 0)
        return result;
    errno = static_cast<int>(-result);
    return -1;
}

int Describe(const InodePtr& inode, struct stat* status)
{
    if (!inode)
        return -ENOENT;
    *status = {};
    status->st_dev = 1;
    status->st_ino = inode->number;
    status->st_nlink = static_cast<nlink_t>(answering->disk.NamesOf(inode));
    status->st_mode = inode->isFolder ? S_IFDIR | S_IRWXU : S_IFREG | S_IRUSR | S_IWUSR;
    status->st_size = static_cast<off_t>(inode->content.size());
    return 0;
}

}  // namespace

void AnswerCalls(SimulatedSystem* system)
{
    answering = system;
}

}  // namespace kelvora::simulation

using namespace kelvora::simulation;  // NOLINT: the calls below belong to no namespace

// Names with two underscores are how the linker finds them.
// NOLINTBEGIN(bugprone-reserved-identifier, cert-dcl37-c, cert-dcl51-cpp)
extern "C" {

// Calls for paths under /sim and for files that are open there; the system's own for all others.
#define HERE_OR_REAL(result, name, parameters, arguments, subject, told)       \
    result __real_##name parameters;                                           \
    result __wrap_##name parameters                                            \
    {                                                                          \
        return IsHere(subject) ? Told<result>(told) : __real_##name arguments; \
    }
HERE_OR_REAL(int, close, (int file), (file), file, answering->disk.Close(file))
HERE_OR_REAL(ssize_t, read, (int file, void* bytes, size_t size), (file, bytes, size), file,
             answering->disk.Read(file, static_cast<char*>(bytes), size))
HERE_OR_REAL(ssize_t, write, (int file, const void* bytes, size_t size), (file, bytes, size), file,
             answering->disk.Write(file, {static_cast<const char*>(bytes), size}))
HERE_OR_REAL(int, stat, (const char* path, struct stat* status), (path, status), path,
             Describe(answering->disk.Find(path), status))
HERE_OR_REAL(int, fstat, (int file, struct stat* status), (file, status), file,
             Describe(answering->disk.Opened(file), status))

int __real_open(const char* path, int flags, ...);
int __wrap_open(const char* path, int flags, ...)
{
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return IsHere(path) ? Told(answering->disk.Open(path, flags)) : __real_open(path, flags, mode);
}

// Calls of the programs' files alone.
#define HERE(result, name, parameters, told)                             \
    result __wrap_##name parameters                                      \
    {                                                                    \
        return Told<result>(answering ? result{told} : result{-ENOSYS}); \
    }
HERE(int, lstat, (const char* path, struct stat* status), Describe(answering->disk.Find(path), status))
HERE(int, access, (const char* path, int mode), answering->disk.MayAccess(path, (mode & W_OK) != 0))
HERE(ssize_t, readlink, (const char* path, char*, size_t), answering->disk.Find(path) ? -EINVAL : -ENOENT)
HERE(ssize_t, pread, (int file, void* bytes, size_t size, off_t at),
     answering->disk.Read(file, static_cast<char*>(bytes), size, static_cast<std::size_t>(at)))
HERE(int, fsync, (int file), answering->disk.Sync(file))
HERE(int, syncfs, (int), answering->disk.SyncAll())
HERE(int, flock, (int file, int), answering->disk.Lock(file))
HERE(int, ftruncate, (int file, off_t size), answering->disk.Cut(file, static_cast<std::size_t>(size)))
HERE(int, fchmod, (int, mode_t), 0)
HERE(int, fchown, (int, uid_t, gid_t), 0)
HERE(int, rename, (const char* from, const char* to), answering->disk.Rename(from, to))
HERE(int, unlink, (const char* path), answering->disk.Unlink(path))
HERE(int, link, (const char* from, const char* to), answering->disk.Link(from, to))
HERE(int, mkdir, (const char* path, mode_t), answering->disk.MakeFolder(path))

DIR* __wrap_opendir(const char* path)
{
    if (answering && answering->disk.Find(path))
        return reinterpret_cast<DIR*>(new Listing{path, answering->disk.List(path)});
    errno = ENOENT;
    return nullptr;
}

dirent* __wrap_readdir(DIR* folder)
{
    auto& listing = *reinterpret_cast<Listing*>(folder);
    if (listing.next == listing.names.size())
        return nullptr;
    const std::string& name = listing.names[listing.next++];
    const InodePtr inode = answering->disk.Find(listing.path + "/" + name);
    listing.entry.d_type = inode && inode->isFolder ? DT_DIR : DT_REG;
    std::snprintf(listing.entry.d_name, sizeof listing.entry.d_name, "%s", name.c_str());
    return &listing.entry;
}

int __wrap_closedir(DIR* folder)
{
    delete reinterpret_cast<Listing*>(folder);
    return 0;
}

int __wrap_gethostname(char* name, size_t size)
{
    std::snprintf(name, size, "till");
    return 0;
}

time_t __real_time(time_t* time);
time_t __wrap_time(time_t* time)
{
    if (!answering)
        return __real_time(time);
    return std::chrono::system_clock::to_time_t(answering->now());
}

}  // extern "C"

std::chrono::system_clock::time_point RealNow() __asm__("__real__ZNSt6chrono3_V212system_clock3nowEv");
std::chrono::system_clock::time_point WrappedNow() __asm__("__wrap__ZNSt6chrono3_V212system_clock3nowEv");
std::chrono::system_clock::time_point WrappedNow()
{
    return answering ? answering->now() : RealNow();
}

unsigned RealChance(std::random_device* device) __asm__("__real__ZNSt13random_device9_M_getvalEv");
unsigned WrappedChance(std::random_device* device) __asm__("__wrap__ZNSt13random_device9_M_getvalEv");
unsigned WrappedChance(std::random_device* device)
{
    return answering ? answering->chance() : RealChance(device);
}
// NOLINTEND(bugprone-reserved-identifier, cert-dcl37-c, cert-dcl51-cpp)
