#include "platform/TextFiles.h"

#include "platform/Encoding.h"

namespace kelvora {

std::string BackupName(const std::string& path)
{
    // "\" and ":" part folders in names that come from the till's world.
    const std::size_t last = path.find_last_of("./\\:");
    return (last != std::string::npos && path[last] == '.' ? path.substr(0, last) : path) + ".bak";
}

void SaveTextFile(Files& files, const std::string& path, const std::string& text)
{
    const std::string backup = BackupName(path);
    if (backup != path && files.Exists(path)) {
        try {
            files.Copy(path, backup);
        } catch (const FileError& error) {
            if (error.Path() == path)
                throw;
            // The user has named the file, not its backup.
            throw FileError(path,
                            "its backup cannot be written, " + TextFromPath(backup) + ": " + error.what());
        }
    }
    files.Write(path, std::string(text).append(SavedFileEnd));
}

}  // namespace kelvora
