// The disk of the simulation: what programs see of it, and what of that a cut of the power leaves. It keeps
// to what POSIX promises and to no more: what was written outlasts a cut once the file was synced, a name
// once its folder was. Before that the cut decides, for the names of a folder in the order in which they
// changed.
//
// Calls give what the system's give, or an error number below 0.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "simulation/Random.h"

namespace kelvora::simulation {

struct Inode {
    std::uint64_t number = 0;
    bool isFolder = false;
    int names = 0;
    std::string content;
    std::string synced;  ///< what is on the disk for certain
    bool isLocked = false;
};

/// What goes wrong; 0 and below for nothing.
struct DiskFaults {
    long room = -1;  ///< bytes that can still be written; below 0 for all
    bool isReadOnly = false;
    int failedSyncs =
        0;  ///< how many syncs of files from now on fail; those of folders nobody could be told of

    bool AreNone() const { return room < 0 && !isReadOnly && failedSyncs == 0; }
};

class Disk {
public:
    using InodePtr = std::shared_ptr<Inode>;

    Disk();

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
    std::vector<std::string> List(const std::string& folder) const;

    InodePtr Find(const std::string& path) const;
    /// Null for a descriptor that is not open here.
    InodePtr Opened(int file) const;

    /// The process that used it is gone, its files are closed.
    void CloseAll();
    /// The power fails: what was not synced may be there, in part or not at all.
    void PowerCut(Random& random);
    /// Somebody else's file, whole and synced; nothing takes it away.
    void Put(const std::string& path, const std::optional<std::string>& text);

    /// What is there, and what would be there for certain after a cut; nothing where nothing is.
    std::optional<std::string> Content(const std::string& path) const;
    std::optional<std::string> Certain(const std::string& path) const;
    /// All files, by path.
    const std::map<std::string, InodePtr>& All() const { return names_; }

    DiskFaults faults;
    /// Called before each change, which is not made when it gives false.
    std::function<bool()> onChange;

private:
    struct Opening {
        InodePtr inode;
        std::size_t at = 0;
        bool isAppending = false;
        std::string folder;  ///< its path, when it is one
        bool holdsLock = false;
    };
    using Names = std::map<std::string, InodePtr>;
    using NameChange = std::vector<std::pair<std::string, InodePtr>>;  ///< null takes the name away
    struct Pending {
        std::string folder;
        NameChange change;
    };

    int MayChange();
    void Change(NameChange change);
    static void Apply(Names& names, const NameChange& change);
    void SyncNames(const std::string& folder);

    Names names_;
    Names certain_;
    std::vector<Pending> pending_;
    std::map<int, Opening> files_;
    int nextFile_;
    std::uint64_t nextNumber_ = 1;
};

}  // namespace kelvora::simulation
