// The templates that a new setup can begin with: setup files in a folder of the program's, and in one of the
// person's own. A template is called what its file is called, without the ending.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Files.h"

namespace kelvora {

struct Template {
    std::string path;
    std::string name;    ///< bytes, as file names are
    bool isOwn = false;  ///< the person's own, which can be removed
};

class Templates {
public:
    /// Neither folder need exist. `files` outlives the object.
    Templates(Files& files, std::string programFolder, std::string ownFolder);

    /// The person's own, or the program's, by name. Throws FileError when the folder cannot be read.
    std::vector<Template> List(bool isOwn) const;

    /// The path of the person's own template of that name.
    std::string PathFor(std::string_view name) const;

    /// Makes the folder of the person's own ones where there is none. Throws FileError.
    void MakeFolder() const { files_.MakeFolder(ownFolder_); }

    /// Gives an own template another path, where no file is; the file that it held before goes with it.
    /// Throws FileError; the template is at its old path then, and may be at the other too.
    void Move(const std::string& path, const std::string& to) const;

    /// Takes an own template away, and the file that it held before. Throws FileError.
    void Remove(const std::string& path) const;

private:
    Files& files_;
    std::string programFolder_;
    std::string ownFolder_;
};

enum class NameFault {
    Unfit,    ///< nothing is in it beside blanks, it is hidden, or leads into another folder
    TooLong,  ///< for a file system
};

/// Why a template cannot have that name; nothing for one that it can.
std::optional<NameFault> FaultOf(std::string_view name);

}  // namespace kelvora
