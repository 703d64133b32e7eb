#include "platform/posix/PosixFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

namespace kelvora {

namespace {

// The system's description in English, whatever the locale: the user's locale may speak in other bytes than
// the program's texts.
[[noreturn]] void Fail(const std::string& path, int error)
{
    throw FileError(path, strerrordesc_np(error));
}

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor()
    {
        if (number_ >= 0)
            close(number_);
    }

    int Number() const { return number_; }
    int Close() { return close(std::exchange(number_, -1)); }

private:
    int number_;
};

// The file that a chain of links leads to, so that a write replaces that file and not the link; the path
// itself where it is no link, or leads to a file that is still to be made.
std::string ResolveLinks(const std::string& path)
{
    constexpr int MostLinks = 40;
    std::string target = path;
    for (int links = 0; links < MostLinks; ++links) {
        std::array<char, PATH_MAX> text{};
        const ssize_t length = readlink(target.c_str(), text.data(), text.size());
        if (length < 0)
            return target;
        const std::string next(text.data(), static_cast<std::size_t>(length));
        const std::size_t slash = target.rfind('/');
        target = next.starts_with('/') || slash == std::string::npos
                     ? next
                     : target.substr(0, slash + 1).append(next);
    }
    Fail(path, ELOOP);
}

std::string FolderOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

// A rename would put the new file over a folder's or a device's name, or over a file that its owner has
// protected from writing.
void CheckReplaceable(const std::string& path)
{
    struct stat status {};
    if (stat(path.c_str(), &status) != 0)
        return;
    if (S_ISDIR(status.st_mode))
        Fail(path, EISDIR);
    if (!S_ISREG(status.st_mode))
        throw FileError(path, "Not a regular file");
    if (access(path.c_str(), W_OK) != 0)
        Fail(path, errno);
}

// A new file in the folder of `path` that goes away again unless it takes the place of `path`.
class Replacement {
public:
    explicit Replacement(std::string path) : path_(std::move(path)), file_(CreateTemporary()) {}
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    ~Replacement()
    {
        if (!temporary_.empty())
            unlink(temporary_.c_str());
    }

    void Write(const std::string& text)
    {
        std::size_t done = 0;
        while (done < text.size()) {
            const ssize_t count = write(file_.Number(), text.data() + done, text.size() - done);
            if (count < 0 && errno != EINTR)
                Fail(path_, errno);
            done += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
        }
    }

    // Puts the file in the place of `path`, with the owner and permissions of `model` where that exists.
    void TakePlace(const std::string& model)
    {
        struct stat old {};
        if (stat(model.c_str(), &old) == 0) {
            // Only the administrator may give a file to another owner; anyone else keeps it as their own.
            if (fchown(file_.Number(), old.st_uid, old.st_gid) != 0 && errno != EPERM)
                Fail(path_, errno);
            if (fchmod(file_.Number(), old.st_mode & 07777) != 0)
                Fail(path_, errno);
        }
        if (fsync(file_.Number()) != 0 || file_.Close() != 0)
            Fail(path_, errno);
        if (rename(temporary_.c_str(), path_.c_str()) != 0)
            Fail(path_, errno);
        temporary_.clear();
        // The content is safe either way; without this a power cut may bring the old name back.
        const Descriptor folder(open(FolderOf(path_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (folder.Number() >= 0)
            fsync(folder.Number());
    }

private:
    // Names that are taken, by another save or by one that was killed, are passed over.
    int CreateTemporary()
    {
        const std::string start = FolderOf(path_) + ".kelvora-" + std::to_string(getpid()) + "-";
        for (unsigned attempt = 0;; ++attempt) {
            temporary_ = start + std::to_string(attempt) + ".tmp";
            const int number = open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
            if (number >= 0)
                return number;
            if (errno != EEXIST)
                Fail(path_, errno);
        }
    }

    std::string path_;
    std::string temporary_;
    Descriptor file_;  // made last: what names the file is there before it
};

}  // namespace

void ReadWholeFile(const std::string& path, std::string& text)
{
    // Not blocking: a pipe without a writer must not hold the program up.
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (file.Number() < 0)
        Fail(path, errno);
    struct stat status {};
    if (fstat(file.Number(), &status) != 0)
        Fail(path, errno);
    if (S_ISDIR(status.st_mode))
        Fail(path, EISDIR);
    if (!S_ISREG(status.st_mode))
        throw FileError(path, "Not a regular file");
    const auto size = static_cast<std::size_t>(status.st_size);
    if (size > MaximumFileSize)
        Fail(path, EFBIG);
    try {
        text.resize(size);
    } catch (const std::bad_alloc&) {
        Fail(path, ENOMEM);
    }
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t count = read(file.Number(), text.data() + done, text.size() - done);
        if (count == 0)
            break;
        if (count < 0 && errno != EINTR)
            Fail(path, errno);
        done += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }
    text.resize(done);
}

std::string PosixFiles::Read(const std::string& path) const
{
    std::string text;
    ReadWholeFile(path, text);
    return text;
}

bool PosixFiles::Exists(const std::string& path) const
{
    return access(path.c_str(), F_OK) == 0;
}

void PosixFiles::Copy(const std::string& from, const std::string& to)
{
    const std::string text = Read(from);
    const std::string target = ResolveLinks(to);
    CheckReplaceable(target);
    Replacement replacement(target);
    replacement.Write(text);
    replacement.TakePlace(from);
}

void PosixFiles::Write(const std::string& path, const std::string& text)
{
    const std::string target = ResolveLinks(path);
    CheckReplaceable(target);
    Replacement replacement(target);
    replacement.Write(text);
    replacement.TakePlace(target);
}

}  // namespace kelvora
