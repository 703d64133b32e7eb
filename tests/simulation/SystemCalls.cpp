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

// Of calls that nobody else makes.
template <class Call>
int Here(Call call)
{
    return Told(answering ? call(answering->disk) : -ENOSYS);
}

int Describe(const Disk::InodePtr& inode, struct stat* status)
{
    if (!inode)
        return Told(-ENOENT);
    *status = {};
    status->st_dev = 1;
    status->st_ino = inode->number;
    status->st_nlink = static_cast<nlink_t>(inode->names);
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

int __real_open(const char* path, int flags, ...);
int __real_close(int file);
ssize_t __real_read(int file, void* bytes, size_t size);
ssize_t __real_pread(int file, void* bytes, size_t size, off_t at);
ssize_t __real_write(int file, const void* bytes, size_t size);
int __real_stat(const char* path, struct stat* status);
int __real_lstat(const char* path, struct stat* status);
int __real_fstat(int file, struct stat* status);
int __real_access(const char* path, int mode);
ssize_t __real_readlink(const char* path, char* text, size_t size);
DIR* __real_opendir(const char* path);
dirent* __real_readdir(DIR* folder);
int __real_closedir(DIR* folder);

int __wrap_open(const char* path, int flags, ...)
{
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return IsHere(path) ? Told(answering->disk.Open(path, flags)) : __real_open(path, flags, mode);
}

int __wrap_close(int file)
{
    return IsHere(file) ? Told(answering->disk.Close(file)) : __real_close(file);
}

ssize_t __wrap_read(int file, void* bytes, size_t size)
{
    return IsHere(file) ? Told(answering->disk.Read(file, static_cast<char*>(bytes), size))
                        : __real_read(file, bytes, size);
}

ssize_t __wrap_pread(int file, void* bytes, size_t size, off_t at)
{
    if (!IsHere(file))
        return __real_pread(file, bytes, size, at);
    return Told(answering->disk.Read(file, static_cast<char*>(bytes), size, static_cast<std::size_t>(at)));
}

ssize_t __wrap_write(int file, const void* bytes, size_t size)
{
    if (!IsHere(file))
        return __real_write(file, bytes, size);
    return Told(answering->disk.Write(file, {static_cast<const char*>(bytes), size}));
}

int __wrap_stat(const char* path, struct stat* status)
{
    return IsHere(path) ? Describe(answering->disk.Find(path), status) : __real_stat(path, status);
}

int __wrap_lstat(const char* path, struct stat* status)
{
    return IsHere(path) ? Describe(answering->disk.Find(path), status) : __real_lstat(path, status);
}

int __wrap_fstat(int file, struct stat* status)
{
    return IsHere(file) ? Describe(answering->disk.Opened(file), status) : __real_fstat(file, status);
}

int __wrap_access(const char* path, int mode)
{
    if (!IsHere(path))
        return __real_access(path, mode);
    if (!answering->disk.Find(path))
        return Told(-ENOENT);
    return answering->disk.faults.isReadOnly && (mode & W_OK) != 0 ? Told(-EROFS) : 0;
}

ssize_t __wrap_readlink(const char* path, char* text, size_t size)
{
    if (!IsHere(path))
        return __real_readlink(path, text, size);
    return Told<ssize_t>(answering->disk.Find(path) ? -EINVAL : -ENOENT);
}

// These come to the programs' files alone.
int __wrap_fsync(int file)
{
    return Here([&](Disk& disk) { return disk.Sync(file); });
}
int __wrap_syncfs(int /*file*/)
{
    return Here([](Disk& disk) { return disk.SyncAll(); });
}
int __wrap_flock(int file, int /*kind*/)
{
    return Here([&](Disk& disk) { return disk.Lock(file); });
}
int __wrap_ftruncate(int file, off_t size)
{
    return Here([&](Disk& disk) { return disk.Cut(file, static_cast<std::size_t>(size)); });
}
int __wrap_fchmod(int /*file*/, mode_t /*mode*/)
{
    return 0;
}
int __wrap_fchown(int /*file*/, uid_t /*user*/, gid_t /*group*/)
{
    return 0;
}
int __wrap_rename(const char* from, const char* to)
{
    return Here([&](Disk& disk) { return disk.Rename(from, to); });
}
int __wrap_unlink(const char* path)
{
    return Here([&](Disk& disk) { return disk.Unlink(path); });
}
int __wrap_link(const char* from, const char* to)
{
    return Here([&](Disk& disk) { return disk.Link(from, to); });
}
int __wrap_mkdir(const char* path, mode_t /*mode*/)
{
    return Here([&](Disk& disk) { return disk.MakeFolder(path); });
}

DIR* __wrap_opendir(const char* path)
{
    if (!IsHere(path))
        return __real_opendir(path);
    if (!answering->disk.Find(path)) {
        errno = ENOENT;
        return nullptr;
    }
    return reinterpret_cast<DIR*>(new Listing{answering->disk.List(path)});
}

dirent* __wrap_readdir(DIR* folder)
{
    if (!answering)
        return __real_readdir(folder);
    auto& listing = *reinterpret_cast<Listing*>(folder);
    if (listing.next == listing.names.size())
        return nullptr;
    std::snprintf(listing.entry.d_name, sizeof listing.entry.d_name, "%s",
                  listing.names[listing.next++].c_str());
    return &listing.entry;
}

int __wrap_closedir(DIR* folder)
{
    if (!answering)
        return __real_closedir(folder);
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
