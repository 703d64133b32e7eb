// What the File menu of a setup window does with files: which name is asked for and how, opening, saving, and
// the questions in between. No window lives here.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "app/Program.h"
#include "setup/PosCfg.h"
#include "setup/SetupDocument.h"

namespace kelvora {

/// The filters of the setup dialogs and of the flash dump dialogs: three pairs of text and pattern.
std::string SetupFilters(const MessageCatalogue& catalogue);
std::string DumpFilters(const MessageCatalogue& catalogue);

/// A file as a window holds it: the path that is opened and written, and the lower-cased FileName.
struct SetupFile {
    std::string path;
    std::string fileName;
};

/// `path` as a window's file.
SetupFile MakeSetupFile(std::string path);

/// The display name of a file: without folder, lower-cased, cut before its first ".".
std::string DisplayName(std::string_view path);

/// Ask for a file to open, or a name to save under; folder and filter are remembered in `settings`. Nothing
/// on Cancel. `current` is the window's file, or the name that it may get, and is offered unless it is empty.
/// A name that is typed for a new file is lower-cased and gets the filter's ending unless it has one that the
/// dialog knows; replacing another file is asked first.
std::optional<SetupFile> GetConfigFileName(Program& program, PosCfg& settings, std::string_view current,
                                           const MessageId& title = Message::OpenSetupTitle);
std::optional<SetupFile> GetSaveConfigFileAs(Program& program, PosCfg& settings, std::string_view current);
std::optional<SetupFile> GetSaveFlashDumpAs(Program& program, PosCfg& settings, std::string_view current);

/// Copies what the dialogs remember from one settings object to another.
void CopyDialogFolders(const PosCfg& from, PosCfg& to);

/// Reads a setup file. A rejected one gives message 201 with the line and what was expected there: Yes opens
/// an empty setup without a file name, anything else, like a file that cannot be read, nothing.
struct OpenedSetup {
    SetupDocument document;
    SetupFile file;
    std::string name;  ///< the display name of the file that was meant
};
std::optional<OpenedSetup> OpenSetup(Program& program, const SetupFile& file);

/// Reads a setup file to look at only; nothing, after a message, when it is rejected or cannot be read.
std::optional<SetupDocument> ReadOtherSetup(Program& program, const std::string& path);

/// Writes a text, keeping the previous file as ".bak"; asks before that replaces another file's backup.
/// False, after a message, when it cannot be written; nothing when the user would not.
std::optional<bool> SaveKeepingBackup(Program& program, const std::string& path, const std::string& text);

/// Writes a setup in that way.
std::optional<bool> SaveSetup(Program& program, const SetupDocument& document, const std::string& path);

}  // namespace kelvora
