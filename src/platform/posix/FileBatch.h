// Many files written together. Each is written as by PosixFiles, and as safely, but what it costs to wait for
// the disk is paid once for all of them.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "platform/Files.h"
#include "platform/posix/PosixFiles.h"
#include "platform/posix/Replacement.h"

namespace kelvora {

/// Write, and a Copy of the same file right before it, only prepare: until Commit all files are what they
/// were. Each write holds a file open.
class FileBatch final : public Files {
public:
    /// How many files each of so many batches (1 or more) may hold at a time: the system lets a process have
    /// only so many open. Asks it for more.
    static std::size_t Room(std::size_t batches);

    std::string Read(const std::string& path) const override { return files_.Read(path); }
    bool Exists(const std::string& path) const override { return files_.Exists(path); }
    std::vector<std::string> List(const std::string& folder) const override { return files_.List(folder); }
    void MakeFolder(const std::string& folder) override { files_.MakeFolder(folder); }
    void Remove(const std::string& path) override { files_.Remove(path); }
    std::unique_ptr<const Files> ForThread() const override { return files_.ForThread(); }

    /// The copy is the old file itself where the file system allows it: a new one takes that one's place.
    void Copy(const std::string& from, const std::string& to) override;
    void Write(const std::string& path, const std::string& text) override;

    /// A file that is left as it was, and why.
    struct Failure {
        std::string path;  ///< as it was named to Write
        FileError error;
    };

    /// Brings the new contents to the disk, then the copies and the files into their places. The batch is
    /// empty then.
    std::vector<Failure> Commit();

private:
    struct Change {
        std::string path;
        std::unique_ptr<Replacement> copy, file;
    };

    template <class Step>
    void ForEach(std::vector<Failure>& failures, Step step);
    void Sync(std::vector<Failure>& failures);

    PosixFiles files_;
    std::vector<Change> changes_;
    Change copied_;  ///< of a Copy whose Write is to come
};

}  // namespace kelvora
