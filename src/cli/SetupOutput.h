// Where the commands put what they make of setup files: into a folder under the names of the setups, or over
// the files themselves, so that none takes the place of another's.
#pragma once

#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "cli/SetupNames.h"

namespace kelvora {

/// A setup file and where what is made of it goes; standard output when `output` is empty.
struct PlacedSetup {
    FoundName name;
    std::string output;
};

/// Gives each setup a place of its own.
class OutputPlaces {
public:
    /// What is replaced is kept under its name and ".bak", or as a save in the program keeps it: under its
    /// name with that in the place of its ending, which two files may have in common.
    enum class Backup { Appended, AsSaved };

    explicit OutputPlaces(Backup backup) : backup_(backup) {}

    /// A setup whose output would take the place of another's, or its backup that of another's, gets a
    /// failure.
    PlacedSetup Take(FoundName name, std::string output);

private:
    // One name for all spellings of a path.
    std::string PlainPath(const std::string& path);

    Backup backup_;
    std::set<std::string> taken_;
    std::string folder_;  ///< of the path before, whose files mostly stand together
    std::optional<std::string> plainFolder_;
};

/// The path of a setup's output in `folder`: under the folders that the setup has below the folder that was
/// named. It ends in `ending`, such as ".svg"; as the setup's file where that is empty.
std::string PlaceInFolder(const std::string& folder, const FoundName& name, std::string_view ending);

/// Whether `folder` lies below one of the folders among `names`, where its files would count as setups.
bool LiesBelowOneOf(std::span<const std::string> names, const std::string& folder);

/// Makes the folder of a path with those above it that are missing. Throws FileError.
void MakeFolderOf(const std::string& path);

/// Saves the text of a setup as the program does, without SavedFileEnd, in a folder that is made where it is
/// missing. A file that has this content is left alone, with its backup. Throws FileError.
void WriteSetupFile(const std::string& path, const std::string& text);

/// Makes `content` that of the file, and keeps an older one under its name and ".bak". A setup's own backup
/// has the name without the ending, and stays. Throws FileError.
void ReplaceFile(const std::string& path, const std::string& content);

}  // namespace kelvora
