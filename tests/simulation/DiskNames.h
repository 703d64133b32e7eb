// The names on the disk: those that programs see, and those that a cut of the power leaves. A name outlasts a
// cut once its folder was synced; before that the cut decides, for the names of a folder in the order in
// which they changed.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "simulation/Random.h"

namespace kelvora::simulation {

struct Inode {
    /// What was not synced may be there, in part or not at all.
    void CutPower(Random& random);

    std::uint64_t number = 0;
    bool isFolder = false;
    std::string content;
    std::string synced;  ///< what is on the disk for certain
    bool isLocked = false;
};
using InodePtr = std::shared_ptr<Inode>;

/// Without its last name.
std::string FolderOf(const std::string& path);

class DiskNames {
public:
    using Names = std::map<std::string, InodePtr>;
    using Changes = std::vector<std::pair<std::string, InodePtr>>;  ///< null takes the name away

    /// With the folder `root` alone.
    DiskNames(std::string root, InodePtr inode);

    InodePtr Find(const std::string& path) const { return In(now_, path); }
    /// What the name stands for whatever happens; null where it may be gone.
    InodePtr FindCertain(const std::string& path) const;
    std::vector<std::string> List(const std::string& folder) const;
    const Names& All() const { return now_; }

    /// Together or not at all, in the folder of the first.
    void Change(Changes changes);
    /// An empty name is all folders.
    void Sync(const std::string& folder);
    void CutPower(Random& random);

private:
    static InodePtr In(const Names& names, const std::string& path);

    std::string root_;
    Names now_, certain_;
    std::vector<std::pair<std::string, Changes>> pending_;  ///< by folder
};

}  // namespace kelvora::simulation
