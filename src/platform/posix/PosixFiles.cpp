#include "platform/posix/PosixFiles.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <memory>
#include <new>
#include <string_view>
#include <system_error>

#include "platform/posix/Descriptor.h"
#include "platform/posix/Replacement.h"

namespace kelvora {

namespace {

namespace fs = std::filesystem;

void Replace(const std::string& path, const std::string& model, const std::string& text)
{
    Replacement replacement(path, model);
    replacement.Write(text);
    replacement.Sync();
    replacement.TakePlace();
    // The content is safe either way; without this a power cut may bring the old name back.
    SyncFolderOf(path);
}

}  // namespace

void ReadWholeFile(const std::string& path, std::string& text)
{
    // Not blocking: a pipe without a writer must not hold the program up.
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.IsOpen())
        FailFile(path, errno);
    struct stat status {};
    if (fstat(file.Number(), &status) != 0)
        FailFile(path, errno);
    if (S_ISDIR(status.st_mode))
        FailFile(path, EISDIR);
    if (!S_ISREG(status.st_mode))
        throw FileError(path, "Not a regular file");
    // The size is where to start from: some systems' files tell none, and one may grow meanwhile.
    auto room = static_cast<std::size_t>(status.st_size) + 1;
    std::size_t done = 0;
    for (;;) {
        if (room > MaximumFileSize + 1)
            FailFile(path, EFBIG);
        try {
            text.resize(room);
        } catch (const std::bad_alloc&) {
            FailFile(path, ENOMEM);
        }
        const ssize_t count = TEMP_FAILURE_RETRY(read(file.Number(), text.data() + done, text.size() - done));
        if (count < 0)
            FailFile(path, errno);
        if (count == 0)
            break;
        done += static_cast<std::size_t>(count);
        if (done == room)
            room *= 2;
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
    // Another name of the same file would be written over itself. A batch that was killed may have left it
    // so, and not safe yet.
    if (IsSameFile(from, target))
        SyncFolderOf(target);
    else
        Replace(target, from, text);
}

void PosixFiles::Write(const std::string& path, const std::string& text)
{
    const std::string target = WriteTarget(path);
    Replace(target, target, text);
}

std::vector<std::string> PosixFiles::List(const std::string& folder) const
{
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(folder.c_str()), closedir);
    if (!entries && errno == ENOENT)
        return {};
    if (!entries)
        FailFile(folder, errno);
    std::vector<std::string> names;
    errno = 0;
    while (const dirent* const entry = readdir(entries.get()))
        if (const std::string_view name = entry->d_name; name != "." && name != "..")
            names.emplace_back(name);
    if (errno != 0)
        FailFile(folder, errno);
    std::ranges::sort(names);
    return names;
}

void PosixFiles::Remove(const std::string& path)
{
    if (unlink(path.c_str()) != 0)
        FailFile(path, errno);
}

void PosixFiles::MakeFolder(const std::string& folder)
{
    const fs::path path = folder;
    int error = mkdir(folder.c_str(), S_IRWXU) == 0 ? 0 : errno;
    if (error == ENOENT && path.has_parent_path()) {
        MakeFolder(path.parent_path().string());
        error = mkdir(folder.c_str(), S_IRWXU) == 0 ? 0 : errno;
    }
    struct stat status {};
    if (error != 0 && (error != EEXIST || stat(folder.c_str(), &status) != 0))
        FailFile(folder, error);
    if (error != 0 && !S_ISDIR(status.st_mode))
        FailFile(folder, ENOTDIR);
    // What is kept in it is as safe as its name there, the folder's own, and those above it: who made them
    // may have died before they were.
    std::error_code noFolder;
    const fs::path whole = fs::absolute(path, noFolder);
    fs::path above;
    for (const fs::path& part : noFolder ? path : whole) {
        above /= part;
        SyncFolderOf((above / "").string());
    }
}

}  // namespace kelvora
