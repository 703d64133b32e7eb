// A file that takes the place of another in one step: a new file in the same folder is renamed over the old
// one, so that a kill, a full disk or a power cut at any moment leaves the old file or the new one.
#pragma once

#include <sys/stat.h>

#include <memory>
#include <string>
#include <utility>

#include "platform/Files.h"
#include "platform/posix/Descriptor.h"

namespace kelvora {

/// Throws FileError with the system's description in English, whatever the locale: the user's locale may
/// speak in other bytes than the program's texts.
[[noreturn]] void FailFile(const std::string& path, int error);

/// The file that a chain of links leads to, so that a write replaces that file and not the link; the path
/// itself where it is no link, or leads to a file that is still to be made. Throws FileError.
std::string ResolveLinks(const std::string& path);

/// Whether a file may be put in that place: a rename would put it over a folder's or a device's name. Throws
/// FileError when not.
void CheckReplaceable(const std::string& path);

/// What a write to `path` replaces: links are followed. Throws FileError for what cannot be replaced, and
/// for a file that its owner has protected from writing, which a rename would not heed.
std::string WriteTarget(const std::string& path);

/// Whether both names lead to one file; false where one leads to none.
bool IsSameFile(const std::string& one, const std::string& other);

/// Whether `path` is still the name of that open file; a link to it is not.
bool IsNameOf(const std::string& path, const Descriptor& file);

/// Makes what is renamed in the folder of `path` outlast a power cut, as far as the system can.
void SyncFolderOf(const std::string& path);

/// A new file in the folder of `path` that goes away again unless it takes the place of `path`. It gets the
/// owner and the permissions of `model` where that exists. All that fails throws FileError.
class Replacement {
public:
    /// Of what dead processes have left for `path`, so many are looked for; they may be more where several
    /// have saved it at the same time.
    static constexpr unsigned MostLeft = 8;

    Replacement(std::string path, const std::string& model, unsigned mostLeft = MostLeft);

    /// One that is no new file but `from` itself, under a further name. Null where `from` has such already,
    /// or cannot have any.
    static std::unique_ptr<Replacement> ByName(std::string path, const std::string& from);

    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    ~Replacement();

    /// The new file, which is open.
    const Descriptor& File() const { return file_; }

    void Write(const std::string& text);

    /// Makes what was written outlast a power cut; it has to before it takes the place.
    void Sync();

    /// Puts the file in the place of `path`.
    void TakePlace();

private:
    explicit Replacement(std::string path) : path_(std::move(path)) {}

    void TakeRights();
    Descriptor CreateTemporary(unsigned mostLeft);
    Descriptor TryToCreate(const std::string& name);

    std::string path_;
    std::string temporary_;
    struct stat model_ {};
    bool hasModel_ = false;
    Descriptor file_;  // made last: what names the file is there before it
};

}  // namespace kelvora
