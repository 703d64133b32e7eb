#include "simulation/Disk.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <set>

namespace kelvora::simulation {

namespace {

/// Above what the system itself gives.
constexpr int FirstFile = 1 << 20;

std::string FolderOf(const std::string& path)
{
    return path.substr(0, path.rfind('/'));
}

std::string WithoutSlash(std::string path)
{
    while (path.size() > 1 && path.ends_with('/'))
        path.pop_back();
    return path;
}

std::string Surviving(const Inode& inode, Random& random)
{
    const std::string& now = inode.content;
    if (now == inode.synced)
        return now;
    const bool isAppended = now.starts_with(inode.synced);
    const std::size_t least = isAppended ? inode.synced.size() : 0;
    if (!isAppended && random.Once(3))
        return inode.synced;
    return now.substr(0, random.Once(3) ? now.size() : least + random.Below(now.size() - least + 1));
}

}  // namespace

Disk::Disk() : nextFile_(FirstFile)
{
    names_["/sim"] = std::make_shared<Inode>(Inode{.number = nextNumber_++, .isFolder = true});
    certain_ = names_;
}

int Disk::MayChange()
{
    if (onChange && !onChange())
        return -EIO;
    return faults.isReadOnly ? -EROFS : 0;
}

void Disk::Apply(Names& names, const NameChange& change)
{
    for (const auto& [path, inode] : change) {
        if (inode)
            names[path] = inode;
        else
            names.erase(path);
    }
}

void Disk::Change(NameChange change)
{
    Apply(names_, change);
    const std::string folder = FolderOf(change.front().first);
    pending_.push_back({folder, std::move(change)});
}

void Disk::SyncNames(const std::string& folder)
{
    std::erase_if(pending_, [&](const Pending& pending) {
        if (!folder.empty() && pending.folder != folder)
            return false;
        Apply(certain_, pending.change);
        return true;
    });
}

Disk::InodePtr Disk::Find(const std::string& path) const
{
    const auto found = names_.find(WithoutSlash(path));
    return found == names_.end() ? nullptr : found->second;
}

Disk::InodePtr Disk::Opened(int file) const
{
    const auto found = files_.find(file);
    return found == files_.end() ? nullptr : found->second.inode;
}

int Disk::Open(const std::string& given, int flags)
{
    const std::string path = WithoutSlash(given);
    InodePtr inode = Find(path);
    const bool writes = (flags & O_ACCMODE) != O_RDONLY;
    if (inode && (flags & O_EXCL) != 0)
        return -EEXIST;
    if (inode && inode->isFolder && writes)
        return -EISDIR;
    if (!inode && ((flags & O_CREAT) == 0 || !Find(FolderOf(path))))
        return -ENOENT;
    if (writes && faults.isReadOnly)
        return -EROFS;
    if (!inode) {
        if (const int error = MayChange(); error != 0)
            return error;
        inode = std::make_shared<Inode>(Inode{.number = nextNumber_++, .names = 1});
        Change({{path, inode}});
    }
    files_[nextFile_] = {inode, 0, (flags & O_APPEND) != 0, inode->isFolder ? path : std::string()};
    return nextFile_++;
}

int Disk::Close(int file)
{
    const auto found = files_.find(file);
    if (found == files_.end())
        return -EBADF;
    if (found->second.holdsLock)
        found->second.inode->isLocked = false;
    files_.erase(found);
    return 0;
}

long Disk::Read(int file, char* bytes, std::size_t size, std::optional<std::size_t> at)
{
    const auto found = files_.find(file);
    if (found == files_.end())
        return -EBADF;
    std::size_t& place = at ? *at : found->second.at;
    const std::string& content = found->second.inode->content;
    const std::size_t count = place < content.size() ? std::min(size, content.size() - place) : 0;
    std::copy_n(content.begin() + static_cast<std::ptrdiff_t>(std::min(place, content.size())), count, bytes);
    place += count;
    return static_cast<long>(count);
}

long Disk::Write(int file, const std::string& bytes)
{
    const auto found = files_.find(file);
    if (found == files_.end())
        return -EBADF;
    if (const int error = MayChange(); error != 0)
        return error;
    if (faults.room == 0)
        return -ENOSPC;
    Opening& opening = found->second;
    // A call takes no more than this, as it may: who writes has to look.
    constexpr std::size_t Most = 4096;
    std::size_t count = std::min(bytes.size(), Most);
    if (faults.room > 0)
        count = std::min(count, static_cast<std::size_t>(faults.room));
    if (faults.room > 0)
        faults.room -= static_cast<long>(count);
    std::string& content = opening.inode->content;
    const std::size_t at = opening.isAppending ? content.size() : opening.at;
    content.replace(at, std::min(count, content.size() - at), bytes, 0, count);
    opening.at = at + count;
    return static_cast<long>(count);
}

int Disk::Cut(int file, std::size_t size)
{
    if (const int error = MayChange(); error != 0)
        return error;
    const InodePtr inode = Opened(file);
    inode->content.resize(size);
    return 0;
}

int Disk::Sync(int file)
{
    const auto found = files_.find(file);
    if (found == files_.end())
        return -EBADF;
    if (onChange && !onChange())
        return -EIO;
    if (faults.failedSyncs > 0 && !found->second.inode->isFolder) {
        --faults.failedSyncs;
        return -EIO;
    }
    if (found->second.inode->isFolder)
        SyncNames(found->second.folder);
    else
        found->second.inode->synced = found->second.inode->content;
    return 0;
}

int Disk::SyncAll()
{
    if (onChange && !onChange())
        return -EIO;
    for (const auto& [path, inode] : names_)
        inode->synced = inode->content;
    SyncNames({});
    return 0;
}

int Disk::Lock(int file)
{
    const auto found = files_.find(file);
    if (found == files_.end())
        return -EBADF;
    if (found->second.inode->isLocked && !found->second.holdsLock)
        return -EWOULDBLOCK;
    found->second.inode->isLocked = true;
    found->second.holdsLock = true;
    return 0;
}

int Disk::Rename(const std::string& from, const std::string& to)
{
    const InodePtr inode = Find(from);
    if (!inode)
        return -ENOENT;
    if (const int error = MayChange(); error != 0)
        return error;
    if (const InodePtr replaced = Find(to))
        --replaced->names;
    Change({{to, inode}, {from, nullptr}});
    return 0;
}

int Disk::Unlink(const std::string& path)
{
    const InodePtr inode = Find(path);
    if (!inode)
        return -ENOENT;
    if (const int error = MayChange(); error != 0)
        return error;
    --inode->names;
    Change({{path, nullptr}});
    return 0;
}

int Disk::Link(const std::string& from, const std::string& to)
{
    const InodePtr inode = Find(from);
    if (!inode || Find(to))
        return inode ? -EEXIST : -ENOENT;
    if (const int error = MayChange(); error != 0)
        return error;
    ++inode->names;
    Change({{to, inode}});
    return 0;
}

int Disk::MakeFolder(const std::string& given)
{
    const std::string path = WithoutSlash(given);
    if (Find(path))
        return -EEXIST;
    if (!Find(FolderOf(path)))
        return -ENOENT;
    if (const int error = MayChange(); error != 0)
        return error;
    Change({{path, std::make_shared<Inode>(Inode{.number = nextNumber_++, .isFolder = true})}});
    return 0;
}

std::vector<std::string> Disk::List(const std::string& given) const
{
    const std::string start = WithoutSlash(given) + "/";
    std::vector<std::string> names;
    for (auto at = names_.lower_bound(start); at != names_.end() && at->first.starts_with(start); ++at)
        if (at->first.find('/', start.size()) == std::string::npos)
            names.push_back(at->first.substr(start.size()));
    return names;
}

void Disk::CloseAll()
{
    for (const auto& [number, opening] : files_)
        if (opening.holdsLock)
            opening.inode->isLocked = false;
    files_.clear();
}

void Disk::PowerCut(Random& random)
{
    files_.clear();
    std::set<std::string> lost;  // folders whose later changes did not reach the disk
    for (const Pending& pending : pending_) {
        if (random.Once(3))
            lost.insert(pending.folder);
        if (!lost.contains(pending.folder))
            Apply(certain_, pending.change);
    }
    pending_.clear();
    std::erase_if(certain_, [this](const auto& name) {
        return name.first != "/sim" && !certain_.contains(FolderOf(name.first));
    });
    names_ = certain_;
    for (const auto& [path, inode] : names_)
        inode->names = 0;
    for (const auto& [path, inode] : names_) {
        if (inode->names++ == 0)
            inode->content = inode->synced = Surviving(*inode, random);
        inode->isLocked = false;
    }
}

void Disk::Put(const std::string& path, const std::optional<std::string>& text)
{
    const auto inode =
        text ? std::make_shared<Inode>(Inode{nextNumber_++, false, 1, *text, *text, false}) : nullptr;
    Change({{path, inode}});
    SyncNames(FolderOf(path));
}

std::optional<std::string> Disk::Content(const std::string& path) const
{
    const InodePtr inode = Find(path);
    return inode && !inode->isFolder ? std::optional(inode->content) : std::nullopt;
}

std::optional<std::string> Disk::Certain(const std::string& path) const
{
    const auto found = certain_.find(path);
    if (found == certain_.end() || !certain_.contains(FolderOf(path)))
        return std::nullopt;
    return found->second->content == found->second->synced ? std::optional(found->second->synced)
                                                           : std::nullopt;
}

}  // namespace kelvora::simulation
