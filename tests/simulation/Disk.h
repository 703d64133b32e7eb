// The disk of the simulation, as programs see it, and what of that a cut of the power leaves. It keeps to
// what POSIX promises and to no more: what was written outlasts a cut once the file was synced.
//
// Calls give what the system's give, or an error number below 0.
#pragma once

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "simulation/DiskNames.h"

namespace kelvora::simulation {

/// What goes wrong; 0 and below for nothing.
struct DiskFaults {
    long room = -1;  ///< bytes that can still be written; below 0 for all
    bool isReadOnly = false;
    int failedSyncs = 0;  ///< how many from now on fail; those of folders nobody could be told of
    int failedRenames = 0;
    std::string readOnlyFile{};             ///< that may be read and not written
    std::chrono::milliseconds slowness{0};  ///< of each sync

    bool AreNone() const
    {
        return room < 0 && !isReadOnly && failedSyncs == 0 && failedRenames == 0 && readOnlyFile.empty();
    }
};

class Disk {
public:
    Disk();

    int MayAccess(const std::string& path, bool writes) const
    {
        if (!Find(path))
            return -ENOENT;
        return !writes ? 0 : faults.isReadOnly ? -EROFS : path == faults.readOnlyFile ? -EACCES : 0;
    }
    int Open(const std::string& path, int flags);
    int Close(int file);
    long Read(int file, char* bytes, std::size_t size, std::optional<std::size_t> at = std::nullopt);
    long Write(int file, const std::string& bytes);
    int Cut(int file, std::size_t size);
    int Sync(int file);
    int SyncAll();
    int Lock(int file);
    int Rename(const std::string& from, const std::string& to);
    int Unlink(const std::string& path);
    int Link(const std::string& from, const std::string& to);
    int MakeFolder(const std::string& path);
    std::vector<std::string> List(const std::string& folder) const { return names_.List(folder); }

    InodePtr Find(const std::string& path) const { return names_.Find(path); }
    /// How many names it has.
    long NamesOf(const InodePtr& inode) const
    {
        return std::ranges::count(names_.All(), inode, &DiskNames::Names::value_type::second);
    }
    /// Null for a descriptor that is not open here.
    InodePtr Opened(int file)
    {
        const Opening* const opening = OpeningOf(file);
        return opening ? opening->inode : nullptr;
    }

    /// That process is gone, its files are closed.
    void CloseFilesOf(const void* process);
    /// The power fails: what was not synced may be there, in part or not at all.
    void PowerCut(Random& random);
    /// Somebody else's file, whole and synced; nothing takes it away.
    void Put(const std::string& path, const std::optional<std::string>& text);

    /// What is there, and what would be there for certain after a cut; nothing where nothing is.
    std::map<std::string, std::string> Contents() const;
    std::optional<std::string> Content(const std::string& path) const;
    std::optional<std::string> Certain(const std::string& path) const;

    DiskFaults faults;
    const void* user = nullptr;                  ///< the process whose calls come
    std::map<std::string, std::string> renamed;  ///< what each name was before it was renamed last
    /// Called before each change, which is not made when it gives false.
    std::function<bool()> onChange;
    /// Called while a sync takes so long.
    std::function<void(std::chrono::milliseconds)> onSlowness;

private:
    struct Opening {
        InodePtr inode;
        const void* user = nullptr;
        bool isAppending = false;
        std::string folder;  ///< its path, when it is one
        std::size_t at = 0;
        bool holdsLock = false;
    };

    Opening* OpeningOf(int file);
    int MayChange();
    int Change(DiskNames::Changes changes);
    int MaySync(bool isOfFiles);
    InodePtr NewInode(bool isFolder, std::string content = {});

    std::uint64_t nextNumber_ = 1;
    DiskNames names_;
    std::map<int, Opening> files_;
    int nextFile_;
};

}  // namespace kelvora::simulation
