#include "recovery/posix/RecoveryFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/posix/Replacement.h"

namespace kelvora {

namespace {

constexpr std::string_view LockEnding = ".lock";
constexpr std::string_view CopyEnding = ".copy";

/// Far above what any machine's crashes add up to.
constexpr unsigned MostRuns = 1'000'000;

// The run that a name of the folder belongs to; 0 for what is none of the program's.
int RunOf(std::string_view name)
{
    unsigned run = 0;
    const char* const end = name.data() + name.size();
    const std::string_view tail(std::from_chars(name.data(), end, run).ptr, end);
    const bool isOwn = tail == LockEnding || (tail.starts_with('-') && tail.ends_with(CopyEnding));
    return isOwn && run < MostRuns ? static_cast<int>(run) : 0;
}

// The locked file; nothing when a living run has it, or another program was quicker. Where locks are not to
// be had at all, every run counts as ended: the program has no second copy then.
std::optional<Descriptor> Lock(const std::string& path, int flags)
{
    Descriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | flags, S_IRUSR | S_IWUSR));
    if (!file.IsOpen() && errno != EEXIST)
        FailFile(path, errno);
    if (!file.IsOpen() || (flock(file.Number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK))
        return std::nullopt;
    // Before it was locked another program may have taken it away.
    if (!IsNameOf(path, file))
        return std::nullopt;
    return file;
}

}  // namespace

std::string RecoveryFolder::CopyPath(int window) const
{
    return folder_ + "/" + std::to_string(run_) + "-" + std::to_string(window) + std::string(CopyEnding);
}

std::set<int> RecoveryFolder::Runs() const
{
    std::set<int> runs;
    for (const std::string& name : files_.List(folder_))
        runs.insert(RunOf(name));
    runs.erase(0);
    return runs;
}

std::vector<std::string> RecoveryFolder::CopiesOf(int run) const
{
    std::vector<std::string> names = files_.List(folder_);
    std::erase_if(
        names, [run](const std::string& name) { return RunOf(name) != run || !name.ends_with(CopyEnding); });
    return names;
}

// Somebody may have emptied the folder meanwhile.
bool RecoveryFolder::HasRun() const
{
    return lock_.IsOpen() && IsNameOf(LockPath(run_), lock_);
}

void RecoveryFolder::BeginRun()
{
    if (HasRun())
        return;
    files_.MakeFolder(folder_);
    const std::set<int> runs = Runs();
    for (run_ = runs.empty() ? 1 : *runs.rbegin() + 1;; ++run_)
        if (auto lock = Lock(LockPath(run_), O_EXCL)) {
            lock_ = *std::move(lock);
            return;
        }
}

void RecoveryFolder::Keep(int window, const std::string& text)
{
    BeginRun();
    files_.Write(CopyPath(window), text);
    windows_.insert(window);
}

void RecoveryFolder::Drop(int window)
{
    if (windows_.erase(window) == 0)
        return;
    unlink(CopyPath(window).c_str());
    EndRun();
}

// Once there is no copy.
void RecoveryFolder::EndRun()
{
    if (!windows_.empty())
        return;
    if (HasRun())
        unlink(LockPath(run_).c_str());
    lock_ = Descriptor();
}

RecoveryFolder::~RecoveryFolder()
{
    EndRun();
}

// Another user's run may have left what cannot be read, or claimed.
LeftCopy RecoveryFolder::ReadCopy(const std::string& name, const std::string& problem) const
{
    LeftCopy copy{folder_ + "/" + name, {}, problem};
    try {
        if (problem.empty())
            copy.text = files_.Read(copy.id);
    } catch (const FileError& error) {
        copy.error = error.what();
    }
    return copy;
}

std::vector<LeftCopy> RecoveryFolder::Claim()
{
    std::vector<LeftCopy> left;
    for (const int run : Runs()) {
        if (run == run_ && HasRun())
            continue;
        std::string problem;
        try {
            auto lock = Lock(LockPath(run), 0);
            if (!lock)
                continue;
            claimed_.insert_or_assign(run, *std::move(lock));
        } catch (const FileError& error) {
            problem = error.what();
        }
        for (const std::string& name : CopiesOf(run))
            left.push_back(ReadCopy(name, problem));
    }
    return left;
}

void RecoveryFolder::Adopt(const std::string& id, int window)
{
    BeginRun();
    if (rename(id.c_str(), CopyPath(window).c_str()) != 0)
        FailFile(id, errno);
    // Its run may have died before what it says was safe.
    SyncFolderOf(id);
    windows_.insert(window);
}

void RecoveryFolder::Remove(const std::string& id)
{
    if (unlink(id.c_str()) != 0 && errno != ENOENT)
        FailFile(id, errno);
}

void RecoveryFolder::Release()
{
    try {
        for (const auto& [run, lock] : claimed_)
            if (CopiesOf(run).empty())
                unlink(LockPath(run).c_str());
    } catch (const FileError&) {
        // A lock file that nobody holds does no harm.
    }
    claimed_.clear();
}

}  // namespace kelvora
