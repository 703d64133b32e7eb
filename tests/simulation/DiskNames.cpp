#include "simulation/DiskNames.h"

#include <set>

namespace kelvora::simulation {

namespace {

std::string WithoutSlash(std::string path)
{
    while (path.size() > 1 && path.ends_with('/'))
        path.pop_back();
    return path;
}

void Apply(DiskNames::Names& names, const DiskNames::Changes& changes)
{
    for (const auto& [path, inode] : changes) {
        if (inode)
            names[path] = inode;
        else
            names.erase(path);
    }
}

}  // namespace

void Inode::CutPower(Random& random)
{
    const bool isAppended = content.starts_with(synced);
    const std::size_t least = isAppended ? synced.size() : 0;
    if (content != synced && !isAppended && random.Once(3))
        content = synced;
    else if (content != synced && !random.Once(3))
        content.resize(least + random.Below(content.size() - least + 1));
    synced = content;
    isLocked = false;
}

std::string FolderOf(const std::string& path)
{
    const std::string name = WithoutSlash(path);
    return name.substr(0, name.rfind('/'));
}

DiskNames::DiskNames(std::string root, InodePtr inode)
    : root_(std::move(root)), now_{{root_, std::move(inode)}}, certain_(now_)
{
}

InodePtr DiskNames::In(const Names& names, const std::string& path)
{
    const auto found = names.find(WithoutSlash(path));
    return found == names.end() ? nullptr : found->second;
}

InodePtr DiskNames::FindCertain(const std::string& path) const
{
    return certain_.contains(FolderOf(path)) ? In(certain_, path) : nullptr;
}

std::vector<std::string> DiskNames::List(const std::string& folder) const
{
    const std::string start = WithoutSlash(folder) + "/";
    std::vector<std::string> names;
    for (auto at = now_.lower_bound(start); at != now_.end() && at->first.starts_with(start); ++at)
        if (at->first.find('/', start.size()) == std::string::npos)
            names.push_back(at->first.substr(start.size()));
    return names;
}

void DiskNames::Change(Changes changes)
{
    for (auto& change : changes)
        change.first = WithoutSlash(change.first);
    Apply(now_, changes);
    const std::string folder = FolderOf(changes.front().first);
    pending_.emplace_back(folder, std::move(changes));
}

void DiskNames::Sync(const std::string& folder)
{
    std::erase_if(pending_, [&](const auto& pending) {
        if (!folder.empty() && pending.first != WithoutSlash(folder))
            return false;
        Apply(certain_, pending.second);
        return true;
    });
}

void DiskNames::CutPower(Random& random)
{
    std::set<std::string> lost;  // folders whose later changes did not reach the disk
    for (const auto& [folder, changes] : pending_) {
        if (random.Once(3))
            lost.insert(folder);
        if (!lost.contains(folder))
            Apply(certain_, changes);
    }
    pending_.clear();
    std::erase_if(certain_, [this](const auto& name) {
        return name.first != root_ && !certain_.contains(FolderOf(name.first));
    });
    now_ = certain_;
}

}  // namespace kelvora::simulation
