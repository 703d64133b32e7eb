#include "platform/posix/FileBatch.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <utility>

namespace kelvora {

std::size_t FileBatch::Room(std::size_t batches)
{
    // What a batch waits for the disk is little for each of so many.
    constexpr rlim_t Most = 2048;
    // Standard streams, and what each batch reads from meanwhile.
    constexpr rlim_t Spare = 64;
    // A file, and a copy of it that needs one of its own.
    constexpr rlim_t EachHolds = 2;
    const rlim_t each = EachHolds * batches;
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    // The first limit is low for the sake of old programs; a process may go up to the second by itself.
    const rlimit higher{std::clamp(Spare + Most * each, limit.rlim_cur, limit.rlim_max), limit.rlim_max};
    if (setrlimit(RLIMIT_NOFILE, &higher) == 0)
        limit = higher;
    const rlim_t open = std::max(limit.rlim_cur, Spare) - Spare;
    return std::clamp<rlim_t>(open / each, 1, Most);
}

void FileBatch::Copy(const std::string& from, const std::string& to)
{
    copied_ = {};
    const std::string target = ResolveLinks(to);
    CheckReplaceable(target);
    if (IsSameFile(from, target))
        return;
    copied_.path = from;
    copied_.copy = Replacement::ByName(target, ResolveLinks(from));
    if (copied_.copy)
        return;
    const std::string text = Read(from);
    copied_.copy = std::make_unique<Replacement>(target, from);
    copied_.copy->Write(text);
}

void FileBatch::Write(const std::string& path, const std::string& text)
{
    Change change = std::exchange(copied_, {});
    if (change.path != path)
        change = {path, nullptr, nullptr};
    const std::string target = WriteTarget(path);
    // A look for each name that might be left costs as much as making the file.
    change.file = std::make_unique<Replacement>(target, target, 0);
    change.file->Write(text);
    changes_.push_back(std::move(change));
}

// Takes `step` with each change; one that fails is told and dropped.
template <class Step>
void FileBatch::ForEach(std::vector<Failure>& failures, Step step)
{
    std::erase_if(changes_, [&](const Change& change) {
        try {
            step(change);
            return false;
        } catch (const FileError& error) {
            failures.push_back({change.path, error});
            return true;
        }
    });
}

// Of each file system once, by any of its files.
void FileBatch::Sync(std::vector<Failure>& failures)
{
    std::map<dev_t, int> errors;
    ForEach(failures, [&](const Change& change) {
        struct stat status {};
        const int file = change.file->File().Number();
        if (fstat(file, &status) != 0)
            FailFile(change.path, errno);
        const auto [place, isNew] = errors.try_emplace(status.st_dev, 0);
        if (isNew && syncfs(file) != 0)
            place->second = errno;
        if (place->second != 0)
            FailFile(change.path, place->second);
    });
}

std::vector<FileBatch::Failure> FileBatch::Commit()
{
    std::vector<Failure> failures;
    Sync(failures);
    const bool hasCopies =
        std::ranges::any_of(changes_, [](const Change& change) { return change.copy != nullptr; });
    ForEach(failures, [](const Change& change) {
        if (change.copy)
            change.copy->TakePlace();
    });
    // Only when the old content is safe under its other name.
    if (hasCopies)
        Sync(failures);
    ForEach(failures, [](const Change& change) { change.file->TakePlace(); });
    // The contents are safe either way; this makes the new names outlast a power cut.
    std::vector<Failure> unheeded;
    Sync(unheeded);
    changes_.clear();
    return failures;
}

}  // namespace kelvora
