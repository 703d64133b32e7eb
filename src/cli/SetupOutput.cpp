#include "cli/SetupOutput.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "flash/OwnBackup.h"
#include "platform/TextFiles.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora {

namespace fs = std::filesystem;

namespace {

// One name for all spellings of a folder, which is named with its "/" or is empty.
std::string PlainFolder(const std::string& folder)
{
    std::error_code problem;
    const fs::path plain =
        fs::weakly_canonical(fs::absolute(folder.empty() ? "." : folder, problem), problem);
    return problem ? folder : (plain / "").string();
}

}  // namespace

std::string OutputPlaces::PlainPath(const std::string& path)
{
    const std::size_t name = path.rfind('/') + 1;
    const std::string folder = path.substr(0, name);
    if (!plainFolder_ || folder != folder_) {
        folder_ = folder;
        plainFolder_ = PlainFolder(folder);
    }
    return *plainFolder_ + path.substr(name);
}

PlacedSetup OutputPlaces::Take(FoundName name, std::string output)
{
    const bool asSaved = backup_ == Backup::AsSaved;
    const std::string kept = asSaved ? BackupName(PlainPath(output)) : output;
    if (name.failure.empty() && !taken_.insert(kept).second)
        name.failure = (asSaved ? "another setup's backup has the same name: "
                                : "what becomes of another setup has the same name: ") +
                       kept;
    return {std::move(name), std::move(output)};
}

std::string PlaceInFolder(const std::string& folder, const FoundName& name, std::string_view ending)
{
    std::string below(name.Below());
    const std::size_t dot = below.rfind('.');
    if (!ending.empty() && dot != std::string::npos && dot > below.rfind('/') + 1)
        below.resize(dot);
    return (folder + "/").append(below).append(ending);
}

bool LiesBelowOneOf(std::span<const std::string> names, const std::string& folder)
{
    std::error_code problem;
    const fs::path inner = fs::weakly_canonical(fs::absolute(folder, problem), problem);
    for (const std::string& name : names) {
        const fs::path way = inner.lexically_relative(fs::canonical(name, problem));
        if (!problem && fs::is_directory(name, problem) && !way.empty() && way != "." && *way.begin() != "..")
            return true;
    }
    return false;
}

void MakeFolderOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    // Many files go into one: making it safe takes time.
    if (PosixFiles files; slash != std::string::npos && slash > 0 && !files.Exists(path.substr(0, slash)))
        files.MakeFolder(path.substr(0, slash));
}

void WriteSetupFile(const std::string& path, const std::string& text)
{
    PosixFiles files;
    // What a file was before it had this content is in its backup, and stays there.
    if (files.Exists(path) && files.Read(path) == std::string(text).append(SavedFileEnd))
        return;
    MakeFolderOf(path);
    SaveTextFileUnasked(files, path, text);
}

void ReplaceFile(const std::string& path, const std::string& content)
{
    // Of any size: a document of many pages is larger than a text that is read whole.
    std::error_code problem;
    const std::string backup = path + ".bak";
    if (fs::is_regular_file(path, problem) &&
        !fs::copy_file(path, backup, fs::copy_options::overwrite_existing, problem))
        throw FileError(backup, problem.message());
    PosixFiles().Write(path, content);
}

}  // namespace kelvora
