#include "simulation/Disk.h"

#include <fcntl.h>

#include <algorithm>

namespace kelvora::simulation {

namespace {

/// Above what the system itself gives.
constexpr int FirstFile = 1 << 20;

}  // namespace

Disk::Disk() : names_("/sim", NewInode(true)), nextFile_(FirstFile) {}

InodePtr Disk::NewInode(bool isFolder, std::string content)
{
    return std::make_shared<Inode>(Inode{nextNumber_++, isFolder, content, content, false});
}

int Disk::MayChange()
{
    if (onChange && !onChange())
        return -EIO;
    return faults.isReadOnly ? -EROFS : 0;
}

int Disk::Change(DiskNames::Changes changes)
{
    const int error = MayChange();
    if (error == 0)
        names_.Change(std::move(changes));
    return error;
}

int Disk::MaySync(bool isOfFiles)
{
    if (onChange && !onChange())
        return -EIO;
    if (onSlowness && faults.slowness.count() > 0)
        onSlowness(faults.slowness);
    if (!isOfFiles || faults.failedSyncs == 0)
        return 0;
    --faults.failedSyncs;
    return -EIO;
}

Disk::Opening* Disk::OpeningOf(int file)
{
    const auto found = files_.find(file);
    return found == files_.end() ? nullptr : &found->second;
}

int Disk::Open(const std::string& path, int flags)
{
    InodePtr inode = Find(path);
    const bool writes = (flags & O_ACCMODE) != O_RDONLY;
    if (inode && (flags & O_EXCL) != 0)
        return -EEXIST;
    if (inode && inode->isFolder && writes)
        return -EISDIR;
    if (!inode && ((flags & O_CREAT) == 0 || !Find(FolderOf(path))))
        return -ENOENT;
    if (writes && inode)
        if (const int error = MayAccess(path, true); error != 0)
            return error;
    if (writes && faults.isReadOnly)
        return -EROFS;
    if (!inode) {
        inode = NewInode(false);
        if (const int error = Change({{path, inode}}); error != 0)
            return error;
    }
    files_[nextFile_] = {inode, user, (flags & O_APPEND) != 0, inode->isFolder ? path : std::string()};
    return nextFile_++;
}

int Disk::Close(int file)
{
    Opening* const opening = OpeningOf(file);
    if (!opening)
        return -EBADF;
    if (opening->holdsLock)
        opening->inode->isLocked = false;
    files_.erase(file);
    return 0;
}

long Disk::Read(int file, char* bytes, std::size_t size, std::optional<std::size_t> at)
{
    Opening* const opening = OpeningOf(file);
    if (!opening)
        return -EBADF;
    std::size_t& place = at ? *at : opening->at;
    const std::string& content = opening->inode->content;
    const std::size_t count = place < content.size() ? std::min(size, content.size() - place) : 0;
    std::copy_n(content.begin() + static_cast<std::ptrdiff_t>(std::min(place, content.size())), count, bytes);
    place += count;
    return static_cast<long>(count);
}

long Disk::Write(int file, const std::string& bytes)
{
    Opening* const opening = OpeningOf(file);
    if (!opening)
        return -EBADF;
    if (const int error = MayChange(); error != 0)
        return error;
    if (faults.room == 0)
        return -ENOSPC;
    // A call takes no more than this, as it may: who writes has to look.
    constexpr std::size_t Most = 4096;
    std::size_t count = std::min(bytes.size(), Most);
    if (faults.room > 0)
        count = std::min(count, static_cast<std::size_t>(faults.room));
    if (faults.room > 0)
        faults.room -= static_cast<long>(count);
    std::string& content = opening->inode->content;
    const std::size_t at = opening->isAppending ? content.size() : opening->at;
    content.replace(at, std::min(count, content.size() - at), bytes, 0, count);
    opening->at = at + count;
    return static_cast<long>(count);
}

int Disk::Cut(int file, std::size_t size)
{
    const int error = MayChange();
    if (error == 0)
        Opened(file)->content.resize(size);
    return error;
}

int Disk::Sync(int file)
{
    Opening* const opening = OpeningOf(file);
    if (!opening)
        return -EBADF;
    const InodePtr inode = opening->inode;
    if (const int error = MaySync(!inode->isFolder); error != 0)
        return error;
    if (inode->isFolder)
        names_.Sync(opening->folder);
    else
        inode->synced = inode->content;
    return 0;
}

int Disk::SyncAll()
{
    const bool isOfFiles = std::ranges::any_of(
        names_.All(), [](const auto& name) { return name.second->content != name.second->synced; });
    if (const int error = MaySync(isOfFiles); error != 0)
        return error;
    for (const auto& [path, inode] : names_.All())
        inode->synced = inode->content;
    names_.Sync({});
    return 0;
}

int Disk::Lock(int file)
{
    Opening* const opening = OpeningOf(file);
    if (!opening)
        return -EBADF;
    if (opening->inode->isLocked && !opening->holdsLock)
        return -EWOULDBLOCK;
    opening->inode->isLocked = true;
    opening->holdsLock = true;
    return 0;
}

int Disk::Rename(const std::string& from, const std::string& to)
{
    const InodePtr inode = Find(from);
    if (!inode)
        return -ENOENT;
    if (faults.failedRenames > 0) {
        --faults.failedRenames;
        return -EIO;
    }
    renamed[to] = from;
    return Change({{to, inode}, {from, nullptr}});
}

int Disk::Unlink(const std::string& path)
{
    return Find(path) ? Change({{path, nullptr}}) : -ENOENT;
}

int Disk::Link(const std::string& from, const std::string& to)
{
    const InodePtr inode = Find(from);
    if (!inode || Find(to))
        return inode ? -EEXIST : -ENOENT;
    return Change({{to, inode}});
}

int Disk::MakeFolder(const std::string& path)
{
    if (Find(path))
        return -EEXIST;
    return Find(FolderOf(path)) ? Change({{path, NewInode(true)}}) : -ENOENT;
}

void Disk::CloseFilesOf(const void* process)
{
    std::erase_if(files_, [&](const auto& each) {
        const Opening& opening = each.second;
        if (opening.user == process && opening.holdsLock)
            opening.inode->isLocked = false;
        return opening.user == process;
    });
}

void Disk::PowerCut(Random& random)
{
    files_.clear();
    names_.CutPower(random);
    for (const auto& [path, inode] : names_.All())
        inode->CutPower(random);
}

void Disk::Put(const std::string& path, const std::optional<std::string>& text)
{
    names_.Change({{path, text ? NewInode(false, *text) : nullptr}});
    names_.Sync(FolderOf(path));
}

std::optional<std::string> Disk::Content(const std::string& path) const
{
    const InodePtr inode = Find(path);
    return inode && !inode->isFolder ? std::optional(inode->content) : std::nullopt;
}

std::map<std::string, std::string> Disk::Contents() const
{
    std::map<std::string, std::string> contents;
    for (const auto& [path, inode] : names_.All())
        if (!inode->isFolder)
            contents[path] = inode->content;
    return contents;
}

std::optional<std::string> Disk::Certain(const std::string& path) const
{
    const InodePtr inode = names_.FindCertain(path);
    return inode && inode->content == inode->synced ? std::optional(inode->synced) : std::nullopt;
}

}  // namespace kelvora::simulation
