#include "journal/posix/JournalFolder.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <thread>
#include <utility>

#include "platform/NumberText.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/Replacement.h"

namespace kelvora {

namespace {

constexpr std::string_view FullStart = "journal-";
constexpr std::string_view Extension = ".jsonl";

// The number of a full file; 0 for a name that is none of the program's.
int NumberOf(std::string_view name)
{
    if (!name.starts_with(FullStart) || !name.ends_with(Extension))
        return 0;
    name.remove_suffix(Extension.size());
    return static_cast<int>(WholeNumber<unsigned>(name.substr(FullStart.size())).value_or(0));
}

// Until the file is closed. False when another program keeps it for so long.
bool Lock(int file, int kind, std::chrono::milliseconds patience)
{
    constexpr std::chrono::milliseconds Pause{10};
    while (flock(file, kind | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return false;
        if (patience <= Pause) {
            errno = EBUSY;
            return false;
        }
        std::this_thread::sleep_for(Pause);
        patience -= Pause;
    }
    return true;
}

bool IsStillAt(const std::string& path, const struct stat& file)
{
    struct stat there {};
    return stat(path.c_str(), &there) == 0 && there.st_dev == file.st_dev && there.st_ino == file.st_ino;
}

bool EndsWithLine(int file, off_t size)
{
    char last = '\n';
    return size == 0 || (pread(file, &last, 1, size - 1) == 1 && last == '\n');
}

// Takes back what was begun. What cannot be taken back is a torn line, which readers skip.
[[noreturn]] void TakeBack(const Descriptor& file, off_t size, const std::string& path)
{
    const int error = errno;
    [[maybe_unused]] const int cut = ftruncate(file.Number(), size);
    FailFile(path, error);
}

}  // namespace

JournalFolder::JournalFolder(Files& files, std::string folder, std::size_t fileLimit,
                             std::chrono::milliseconds patience)
    : files_(files), folder_(std::move(folder)), fileLimit_(fileLimit), patience_(patience)
{
}

std::vector<std::string> JournalFolder::FullFiles() const
{
    std::vector<std::string> names = files_.List(folder_);
    std::erase_if(names, [](const std::string& name) { return NumberOf(name) == 0; });
    std::ranges::sort(names, {}, NumberOf);
    return names;
}

void JournalFolder::Append(const std::string& line)
{
    files_.MakeFolder(folder_);
    constexpr int MostTurns = 100;
    for (int turn = 0; turn < MostTurns; ++turn)
        if (TryAppend(line))
            return;
    FailFile(Path(), EBUSY);
}

// False when another file has taken the place of the one that was opened.
bool JournalFolder::TryAppend(const std::string& line)
{
    const std::string path = Path();
    constexpr mode_t Mode = 0666;
    const Descriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK, Mode));
    struct stat status {};
    if (!file.IsOpen() || !Lock(file.Number(), LOCK_EX, patience_) || fstat(file.Number(), &status) != 0)
        FailFile(path, errno);
    if (!S_ISREG(status.st_mode))
        throw FileError(path, "Not a regular file");
    if (!IsStillAt(path, status))
        return false;
    if (status.st_size > 0 && static_cast<std::size_t>(status.st_size) + line.size() > fileLimit_) {
        BeginNextFile();
        return false;
    }
    // What another program could not end must not damage this line.
    const bool isWhole = EndsWithLine(file.Number(), status.st_size);
    // A first line that stays would keep the next one from making the file's name safe.
    if (!file.Write(isWhole ? line : "\n" + line) || fsync(file.Number()) != 0)
        TakeBack(file, status.st_size, path);
    if (status.st_size == 0)
        SyncFolderOf(path);
    return true;
}

// While the present file is locked.
void JournalFolder::BeginNextFile()
{
    constexpr std::size_t Digits = 5;
    const std::vector<std::string> full = FullFiles();
    const int number = full.empty() ? 1 : NumberOf(full.back()) + 1;
    const std::string next =
        folder_ + "/" + std::string(FullStart) + PaddedNumber(number, Digits) + std::string(Extension);
    if (rename(Path().c_str(), next.c_str()) != 0)
        FailFile(next, errno);
}

void JournalFolder::Read(const Reader& take) const
{
    // While it is locked no file is begun: none is missed, and none read twice.
    const Descriptor present(open(Path().c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    Lock(present.Number(), LOCK_SH, patience_);
    for (const std::string& name : FullFiles())
        take(files_.Read(folder_ + "/" + name));
    if (files_.Exists(Path()))
        take(files_.Read(Path()));
}

std::string AccountName()
{
    const passwd* const account = getpwuid(geteuid());
    return account ? account->pw_name : std::to_string(geteuid());
}

}  // namespace kelvora
