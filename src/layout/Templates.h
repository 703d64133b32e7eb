// The templates that a new setup can begin with: setup files in a folder of the program's, and in one of the
// person's own. A template is called what its file is called, without the ending.
#pragma once

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

    /// The path of the person's own template of that name, whose folder is there then. Throws FileError.
    std::string PathFor(std::string_view name) const;

    /// Takes an own template away. Throws FileError.
    void Remove(const std::string& path) const { files_.Remove(path); }

private:
    Files& files_;
    std::string programFolder_;
    std::string ownFolder_;
};

/// Whether a file can have that name: something is in it beside blanks, it is not hidden, leads into no other
/// folder and is no longer than file systems take.
bool IsTemplateName(std::string_view name);

}  // namespace kelvora
