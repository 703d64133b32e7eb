#include "platform/posix/Replacement.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cinttypes>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <tuple>
#include <utility>

namespace kelvora {

namespace {

namespace fs = std::filesystem;

std::string FolderOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

// The temporary files of a save stand beside the file that they are to replace:
//   .kelvora-<16 hexadecimal digits>-<number>.tmp
// The digits are of the file's name and of this machine's: what a save on another machine has left, or is
// still writing, is not this one's to judge. A save holds a lock on its temporary file for as long as that
// has its name; one without a lock was left by a process that has died.
std::string TemporaryStart(const std::string& path)
{
    constexpr std::uint64_t HashBasis = 0xCBF29CE484222325;
    constexpr std::uint64_t HashPrime = 0x100000001B3;
    utsname machine{};
    uname(&machine);
    std::uint64_t hash = HashBasis;
    for (const char c : fs::path(path).filename().string() + '/' + machine.nodename)
        hash = (hash ^ static_cast<unsigned char>(c)) * HashPrime;
    std::array<char, sizeof "0123456789abcdef"> digits{};
    std::snprintf(digits.data(), digits.size(), "%016" PRIx64, hash);
    return FolderOf(path) + ".kelvora-" + digits.data() + "-";
}

// Takes the temporary file of that name away if a dead process has left it. Where locks are not to be had
// nothing is known of the process, and the file stays.
void RemoveIfLeft(const std::string& temporary)
{
    // Where nothing is it stays that of no file.
    struct stat status {};
    lstat(temporary.c_str(), &status);
    if (!S_ISREG(status.st_mode))
        return;
    constexpr int Flags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    // A backup of a file that is protected from writing is so itself; some file systems lock for writers
    // only.
    Descriptor file(open(temporary.c_str(), O_WRONLY | Flags));
    if (!file.IsOpen())
        file = Descriptor(open(temporary.c_str(), O_RDONLY | Flags));
    // With the lock nobody else takes the name away; before it, a living save may have.
    if (file.IsOpen() && flock(file.Number(), LOCK_EX | LOCK_NB) == 0 && IsNameOf(temporary, file))
        unlink(temporary.c_str());
}

}  // namespace

void FailFile(const std::string& path, int error)
{
    throw FileError(path, strerrordesc_np(error));
}

std::string ResolveLinks(const std::string& path)
{
    // As many as the system follows.
    constexpr int MostLinks = 40;
    fs::path target = path;
    for (int links = 0; links <= MostLinks; ++links) {
        std::array<char, PATH_MAX> text{};
        const ssize_t length = readlink(target.c_str(), text.data(), text.size());
        if (length == -1)
            return target.string();
        target.replace_filename(std::string(text.data(), static_cast<std::size_t>(length)));
    }
    FailFile(path, ELOOP);
}

void CheckReplaceable(const std::string& path)
{
    struct stat status {};
    if (stat(path.c_str(), &status) != 0)
        return;
    if (S_ISDIR(status.st_mode))
        FailFile(path, EISDIR);
    if (!S_ISREG(status.st_mode))
        throw FileError(path, "Not a regular file");
}

std::string WriteTarget(const std::string& path)
{
    std::string target = ResolveLinks(path);
    CheckReplaceable(target);
    if (access(target.c_str(), F_OK) == 0 && access(target.c_str(), W_OK) != 0)
        FailFile(target, errno);
    return target;
}

bool IsSameFile(const std::string& one, const std::string& other)
{
    struct stat first {};
    struct stat second {};
    return stat(one.c_str(), &first) == 0 && stat(other.c_str(), &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

bool IsNameOf(const std::string& path, const Descriptor& file)
{
    struct stat named {};
    struct stat opened {};
    return lstat(path.c_str(), &named) == 0 && fstat(file.Number(), &opened) == 0 &&
           named.st_dev == opened.st_dev && named.st_ino == opened.st_ino;
}

void SyncFolderOf(const std::string& path)
{
    const Descriptor folder(open(FolderOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.IsOpen())
        fsync(folder.Number());
}

Replacement::Replacement(std::string path, const std::string& model, unsigned mostLeft)
    : path_(std::move(path)), hasModel_(stat(model.c_str(), &model_) == 0), file_(CreateTemporary(mostLeft))
{
}

Replacement::~Replacement()
{
    if (!temporary_.empty())
        unlink(temporary_.c_str());
}

std::unique_ptr<Replacement> Replacement::ByName(std::string path, const std::string& from)
{
    struct stat status {};
    lstat(from.c_str(), &status);
    if (!S_ISREG(status.st_mode) || status.st_nlink != 1)
        return nullptr;
    const std::string name = TemporaryStart(path) + "0.tmp";
    RemoveIfLeft(name);
    if (link(from.c_str(), name.c_str()) != 0)
        return nullptr;
    std::unique_ptr<Replacement> replacement(new Replacement(std::move(path)));
    replacement->temporary_ = name;
    return replacement;
}

void Replacement::Write(const std::string& text)
{
    if (!file_.Write(text))
        FailFile(path_, errno);
    if (hasModel_)
        TakeRights();
}

void Replacement::Sync()
{
    // Closing it would give up the lock on its name; after this it can bring no error any more.
    if (fsync(file_.Number()) != 0)
        FailFile(path_, errno);
}

void Replacement::TakePlace()
{
    if (rename(temporary_.c_str(), path_.c_str()) != 0)
        FailFile(path_, errno);
    temporary_.clear();
}

// As far as the system lets this user: only the administrator may give a file to another owner, and some
// file systems know no owners at all.
void Replacement::TakeRights()
{
    std::ignore = fchown(file_.Number(), static_cast<uid_t>(-1), model_.st_gid);
    std::ignore = fchown(file_.Number(), model_.st_uid, model_.st_gid);
    struct stat own {};
    fstat(file_.Number(), &own);
    mode_t mode = model_.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO);
    // What the old group might do is not another group's right.
    if (own.st_gid != model_.st_gid)
        mode &= ~static_cast<mode_t>(S_IRWXG);
    if (fchmod(file_.Number(), mode) != 0 && errno != EPERM && errno != ENOTSUP && errno != ENOSYS)
        FailFile(path_, errno);
}

// Names that other saves hold are passed over, and what dead ones left is taken away.
Descriptor Replacement::CreateTemporary(unsigned mostLeft)
{
    const std::string start = TemporaryStart(path_);
    Descriptor file;
    for (unsigned number = 0; !file.IsOpen() || number < mostLeft; ++number) {
        const std::string name = start + std::to_string(number) + ".tmp";
        RemoveIfLeft(name);
        if (!file.IsOpen())
            file = TryToCreate(name);
    }
    return file;
}

// Nothing when another has the name.
Descriptor Replacement::TryToCreate(const std::string& name)
{
    // Until it has its model's rights nobody else may look into it.
    const mode_t mode = hasModel_ ? S_IRUSR | S_IWUSR : 0666;
    Descriptor file(open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (!file.IsOpen() && errno != EEXIST)
        FailFile(path_, errno);
    if (!file.IsOpen())
        return {};
    const bool isHeld = flock(file.Number(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    // Before it was locked another save may have taken it for one that was left.
    if (!isHeld || !IsNameOf(name, file))
        return {};
    temporary_ = name;
    return file;
}

}  // namespace kelvora
