// What the File menu of a setup window does with files: opening, saving, and the questions in between. No
// window lives here.
#pragma once

#include <optional>
#include <string>

#include "setup/SetupDocument.h"
#include "setup/SetupFileNames.h"

namespace kelvora {

/// Reads a setup file. A rejected one gives message 201 with the line and what was expected there: Yes opens
/// an empty setup without a file name, anything else, like a file that cannot be read, nothing.
struct OpenedSetup {
    SetupDocument document;
    SetupFile file;
    std::string name;  ///< the display name of the file that was meant
};
std::optional<OpenedSetup> OpenSetup(const UserFiles& files, const SetupFile& file);

/// Reads a setup file to look at only; nothing, after a message, when it is rejected or cannot be read.
std::optional<SetupDocument> ReadOtherSetup(const UserFiles& files, const std::string& path);

/// Writes a text, keeping the previous file as ".bak"; asks before that replaces another file's backup.
/// False, after a message, when it cannot be written; nothing when the user would not.
std::optional<bool> SaveKeepingBackup(const UserFiles& files, const std::string& path,
                                      const std::string& text);

/// Writes a setup in that way.
std::optional<bool> SaveSetup(const UserFiles& files, const SetupDocument& document, const std::string& path);

}  // namespace kelvora
