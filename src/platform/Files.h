// The file system as the rules see it: whole texts in and out, by path.
// Paths are bytes and are never recoded. The real one is platform/posix/PosixFiles.
#pragma once

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace kelvora {

/// A file could not be read, copied or written. `what()` is the system's error description alone.
class FileError : public std::runtime_error {
public:
    FileError(std::string path, const std::string& description)
        : std::runtime_error(description), path_(std::move(path))
    {
    }

    const std::string& Path() const { return path_; }

private:
    std::string path_;
};

/// The largest file that is read whole: far above any text of the program, and little of a machine's memory.
inline constexpr std::size_t MaximumFileSize = std::size_t{16} << 20;

class Files {
public:
    virtual ~Files() = default;

    /// The whole content of a regular file of at most MaximumFileSize bytes. Throws FileError.
    virtual std::string Read(const std::string& path) const = 0;

    /// Whether anything stands at `path`; a link that leads nowhere does not count.
    virtual bool Exists(const std::string& path) const = 0;

    /// Copies `from`, which is read as by Read, over `to`. `to` is left whole, old or new, whatever happens.
    /// Throws FileError.
    virtual void Copy(const std::string& from, const std::string& to) = 0;

    /// Makes `text` the content of `path`, creating or overwriting. The file is left whole, old or new,
    /// whatever happens; permissions and symbolic links are kept. Throws FileError.
    virtual void Write(const std::string& path, const std::string& text) = 0;

    /// The names of what stands in that folder, in ascending order of their bytes; empty when there is no
    /// such folder. Throws FileError.
    virtual std::vector<std::string> List(const std::string& folder) const = 0;

    /// Makes that folder and those above it that are missing, for this user alone. Throws FileError.
    virtual void MakeFolder(const std::string& folder) = 0;

    /// Takes that file, or a link in its place, away for good. Throws FileError.
    virtual void Remove(const std::string& path) = 0;

    /// The same files to read on another thread, whichever of the two ends first.
    virtual std::unique_ptr<const Files> ForThread() const = 0;
};

}  // namespace kelvora
